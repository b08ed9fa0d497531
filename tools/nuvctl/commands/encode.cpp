// SPDX-License-Identifier: Apache-2.0
#include <pcap/dlt.h>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/command.hpp"
#include "frames/capture_file.hpp"
#include "json/encode_json.hpp"
#include "json/fields.hpp"
#include "json/reader.hpp"
#include "nuv/logging/clogmod_proxy.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

struct Options {
    std::vector<std::string> files{"-"};
    std::string format = "hex";
    std::string output = "-";
};

/// Where frames go to.
class FrameWriter {
public:
    explicit FrameWriter(const Options& options) : name_(options.output) {
        File file = open_to_write(options.output);
        if (options.format == "pcap") {
            capture_.emplace(std::move(file), DLT_IEEE802_11);
        } else {
            file_ = std::move(file);
        }
    }

    /// Writes a frame through to the file. Throws OutputError.
    void write(const EncodedFrame& frame) {
        if (!(capture_ ? capture_->write(frame.time, frame.octets) : write_line(frame))) {
            throw OutputError(name_);
        }
    }

private:
    bool write_line(const EncodedFrame& frame) {
        const std::string line = to_hex(std::span(frame.octets).subspan(frame.body)) + '\n';
        return std::fwrite(line.data(), 1, line.size(), file_.get()) == line.size() &&
               std::fflush(file_.get()) == 0;
    }

    const std::string& name_;
    std::optional<CaptureWriter> capture_;
    File file_;
};

class Encoder {
public:
    explicit Encoder(const Options& options) : options_(options) {}

    /// The exit status.
    int run() {
        // What the library would log of an element is the reason given for its refusal.
        nuv::logging::ClogmodProxy("assoc_request_frame").set_loglevel(-1);
        std::string name = options_.output;
        try {
            FrameWriter writer(options_);
            for (const std::string& file : options_.files) {
                name = file;
                encode(file, writer);
            }
        } catch (const FileError& error) {
            report(name + ": " + error.what());
            return 1;
        }
        if (frames_ == 0) {
            report("no JSON to encode");
        }
        return 0;
    }

private:
    /// Stops at the first thing that cannot be encoded, with a FileError.
    void encode(const std::string& name, FrameWriter& writer) {
        JsonReader reader(name);
        try {
            for (std::string text = reader.next(); !text.empty(); text = reader.next()) {
                writer.write(read_json(parse_json(text)));
                ++frames_;
            }
        } catch (const FieldError& error) {
            throw FileError("line " + std::to_string(reader.line()) + ": " + error.what());
        }
    }

    const Options& options_;
    std::uint64_t frames_ = 0;
};

}  // namespace

void add_encode(CLI::App& nuvctl, int& status) {
    auto* command = nuvctl.add_subcommand("encode", "Turn the JSON of decode back into frames");
    auto options = std::make_shared<Options>();
    command->add_option("--format", options->format, "hex: a line a frame body; pcap: a capture")
        ->check(CLI::IsMember({"hex", "pcap"}))
        ->capture_default_str();
    command->add_option("--output", options->output, "Write to this file, - is standard output")
        ->capture_default_str();
    command->add_option("FILE", options->files, "JSON, - is standard input")->capture_default_str();
    command->footer(
        "Reads type, time, station, bssid, the fields of the type's own and of each element id, "
        "extension\n"
        "and fields; an element of any kind may have a body_hex as its only field. What decode "
        "derives from\n"
        "them (ssid, security, rsn, name, offset, length and the rest) may stand there and is not "
        "read.\n"
        "Stops at the first frame that cannot be made and says where.\n\n"
        "Example: nuvctl decode home.pcap | sed 's/\"mdid\":4660/\"mdid\":1/' |\n"
        "         nuvctl encode --format pcap --output edited.pcap");
    set_action(*command, status, [options] { return Encoder(*options).run(); });
}

}  // namespace nuvctl

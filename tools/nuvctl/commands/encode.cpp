// SPDX-License-Identifier: Apache-2.0
#include <pcap/dlt.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "frames/capture_file.hpp"
#include "json/encode_json.hpp"
#include "json/fields.hpp"
#include "json/reader.hpp"
#include "nuv/logging/clogmod_proxy.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

/// Where frames go to.
class FrameWriter {
public:
    explicit FrameWriter(const EncodeOptions& options) : name_(options.output) {
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
    explicit Encoder(const EncodeOptions& options) : options_(options) {}

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
                const EncodedFrame frame = read_json(parse_json(text));
                writer.write(frame);
                ++frames_;
                for (const std::string& note : frame.notes) {
                    report(name + ": line " + std::to_string(reader.line()) + ": " + note);
                }
            }
        } catch (const FieldError& error) {
            throw FileError("line " + std::to_string(reader.line()) + ": " + error.what());
        }
    }

    const EncodeOptions& options_;
    std::uint64_t frames_ = 0;
};

}  // namespace

int run_encode(const EncodeOptions& options) { return Encoder(options).run(); }

}  // namespace nuvctl

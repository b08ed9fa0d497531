// SPDX-License-Identifier: Apache-2.0
#include <pcap/dlt.h>

#include <string>

#include "commands/commands.hpp"
#include "commands/report.hpp"
#include "file.hpp"
#include "frames/capture_file.hpp"
#include "frames/octets.hpp"
#include "json/encode_json.hpp"
#include "json/fields.hpp"
#include "json/reader.hpp"
#include "nuv/logging/clogmod_proxy.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

class Encoder {
public:
    explicit Encoder(const EncodeOptions& options)
        : options_(options), is_capture_(options.format == "pcap") {}

    /// The exit status.
    int run() {
        // What the library would log of an element is the reason given for its refusal.
        nuv::logging::ClogmodProxy("assoc_request_frame").set_loglevel(-1);
        std::string name = options_.output;
        try {
            OutputFile output(options_.output, options_.files);
            output.write(is_capture_ ? capture_header(DLT_IEEE802_11) : std::string());
            for (const std::string& file : options_.files) {
                name = file;
                encode(file, output);
            }
            output.complete();
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
    void encode(const std::string& name, OutputFile& output) {
        JsonReader reader(name);
        try {
            for (std::string text = reader.next(); !text.empty(); text = reader.next()) {
                const EncodedFrame frame = read_json(parse_json(text));
                output.write(is_capture_ ? capture_record(frame.time, frame.octets)
                                         : to_hex(Octets(frame.octets).subspan(frame.body)) + '\n');
                ++frames_;
                const std::string place = name + ": line " + std::to_string(reader.line()) + ": ";
                for (const std::string& note : frame.notes) {
                    report(place + note);
                }
            }
        } catch (const FieldError& error) {
            throw FileError("line " + std::to_string(reader.line()) + ": " + error.what());
        }
    }

    const EncodeOptions& options_;
    bool is_capture_;
    std::uint64_t frames_ = 0;
};

}  // namespace

int run_encode(const EncodeOptions& options) { return Encoder(options).run(); }

}  // namespace nuvctl

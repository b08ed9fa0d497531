// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "commands/commands.hpp"
#include "commands/decode_summary.hpp"
#include "commands/report.hpp"
#include "commands/stop_signals.hpp"
#include "file.hpp"
#include "frames/action_frame.hpp"
#include "frames/association_request.hpp"
#include "frames/capture_file.hpp"
#include "frames/link_layer.hpp"
#include "json/decode_json.hpp"
#include "nuv/logging/clogmod_proxy.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

/// How far a large file is read, for somebody who watches.
class Progress {
public:
    Progress(const std::string& name, const CaptureFile& file)
        : name_(name), file_(file), shown_(isatty(STDERR_FILENO) == 1 && file.size() >= large) {}
    ~Progress() { hide(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void hide() {
        if (percent_ >= 0) {
            std::cerr << "\r\033[K" << std::flush;
            percent_ = -1;
        }
    }

    void update() {
        constexpr unsigned records_between = 1024;
        if (!shown_ || ++records_ % records_between != 0) {
            return;
        }
        const auto percent = static_cast<int>(100 * file_.position() / file_.size());
        if (percent != percent_) {
            percent_ = percent;
            std::cerr << "\r\033[K" << to_printable(name_).text << ": " << percent << " %"
                      << std::flush;
        }
    }

private:
    static constexpr std::int64_t large = 8 << 20;

    const std::string& name_;
    const CaptureFile& file_;
    bool shown_;
    unsigned records_ = 0;
    int percent_ = -1;
};

class Decoder {
public:
    explicit Decoder(const DecodeOptions& options)
        : options_(options), at_once_(isatty(STDOUT_FILENO) == 1) {
        if (options.summary) {
            stop_.emplace();
        }
    }

    /// The exit status.
    int run() {
        // What the library would log of a frame stands in the frame's own output.
        for (const char* module : {"assoc_request_frame", "becon_report"}) {
            nuv::logging::ClogmodProxy(module).set_loglevel(-1);
        }
        for (const std::string& name : options_.files) {
            try {
                read(name);
            } catch (const FileError& error) {
                if (stop_signal() == 0) {  // else the file is whole, and was left within a record
                    fail(name, error);
                }
            }
            if (stop_signal() != 0) {
                break;
            }
        }
        summary_.print(std::cout);
        if (frames_ == 0 && !failed_) {
            report("none of the frames looked for in " + std::to_string(records_) + " records");
        }
        if (stop_signal() != 0) {
            constexpr int ended_by_signal = 128;  // as a shell says it
            std::cout.flush();
            return ended_by_signal + stop_signal();
        }
        return failed_ ? 1 : 0;
    }

private:
    /// Of the signal that ends the reading, 0 before it.
    int stop_signal() { return stop_ ? stop_->received() : 0; }

    void fail(const std::string& place, const FileError& error) {
        report(place + ": " + error.what());
        failed_ = true;
    }

    void read(const std::string& name) {
        CaptureFile file(name, stop_ ? stop_->descriptor() : -1);
        if (!is_ieee802_11(file.link_type())) {
            throw FileError("link type " + std::to_string(file.link_type()) + " is none of " +
                            ieee802_11_link_types());
        }
        Progress progress(name, file);
        bool reported = false;
        const auto frame_in = [&](const Record& record) {
            try {
                return mac_frame(file.link_type(), record);
            } catch (const FileError& error) {
                if (!std::exchange(reported, true)) {
                    progress.hide();
                    fail(name + ": record " + std::to_string(record.number), error);
                }
                return std::optional<MacFrame>();
            }
        };
        while (const auto record = file.next()) {
            ++records_;
            progress.update();
            const auto frame = frame_in(*record);
            const auto management = frame ? management_frame(*frame) : std::nullopt;
            if (!management) {
                continue;
            }
            const auto show = [&](const auto& decoded) {
                if (!is_wanted(decoded.type)) {
                    return;
                }
                ++frames_;
                if (options_.summary) {
                    summary_.add(decoded);
                    return;
                }
                if (at_once_) {
                    progress.hide();  // they may share the terminal
                }
                write_json(std::cout, {name, *record, *frame}, decoded, options_.pretty);
                if (at_once_ || file.is_live()) {
                    std::cout.flush();
                }
            };
            if (const auto request = association_request(*management)) {
                show(*request);
            } else if (const auto action = action_frame(*management)) {
                show(*action);
            }
        }
    }

    bool is_wanted(std::string_view type) const {
        return options_.types.empty() || std::ranges::count(options_.types, type) != 0;
    }

    const DecodeOptions& options_;
    bool at_once_;
    std::optional<StopSignals> stop_;
    Summary summary_;
    bool failed_ = false;
    std::uint64_t records_ = 0;
    std::uint64_t frames_ = 0;
};

}  // namespace

int run_decode(const DecodeOptions& options) { return Decoder(options).run(); }

}  // namespace nuvctl

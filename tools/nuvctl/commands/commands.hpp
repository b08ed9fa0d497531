// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace nuvctl {

// The subcommands. Each returns its exit status, 0 or 1, and throws OutputError when it cannot write
// its output. A file "-" is standard input or output. What a signal ends (a summary, events, a log that
// is followed) returns 128 and the signal's number.

struct DecodeOptions {
    std::vector<std::string> files{"-"};
    bool pretty = false;
    bool summary = false;
    std::vector<std::string> types;  ///< none for all
};
int run_decode(const DecodeOptions& options);

struct EncodeOptions {
    std::vector<std::string> files{"-"};
    std::string format = "hex";  ///< or "pcap"
    std::string output = "-";
};
int run_encode(const EncodeOptions& options);

struct AddressOptions {
    std::vector<std::string> texts;  ///< none for the lines of standard input
    std::string contains;            ///< an IP address, or empty
    bool pretty = false;
};
int run_address(const AddressOptions& options);

/// A channel by its frequency, or by its band and its number in it.
struct ChannelOptions {
    std::int32_t frequency = 0;  ///< in kHz
    std::string band;            ///< "2.4", "5", "6" or "60"
    std::uint32_t number = 0;
    std::string width = "20";  ///< in MHz, or "80+80"
    bool center = false;       ///< the number or frequency is that of a segment's center
};
int run_channel(const ChannelOptions& options);

struct OpclassOptions {
    std::string region = "global";  ///< or "europe"
    std::vector<unsigned> classes;  ///< none for all
    bool table = false;
};
int run_opclass(const OpclassOptions& options);

struct ValidateOptions {
    std::vector<std::string> files{"-"};
};
int run_validate(const ValidateOptions& options);

struct SendOptions {
    std::string endpoint;
    std::string text;  ///< sent with its NUL; "-" for the octets of standard input, as they are
};
int run_send(const SendOptions& options);

struct EmitOptions {
    std::string event;
    std::optional<std::string> text;  ///< as that of SendOptions; none for an event without data
};
int run_emit(const EmitOptions& options);

struct EventsOptions {
    std::vector<std::string> names;  ///< none for all
};
int run_events(const EventsOptions& options);

struct EndpointsOptions {
    bool access = false;
};
int run_endpoints(const EndpointsOptions& options);

struct CmdOptions {
    std::string endpoint;
    std::vector<std::string> words;  ///< none for the lines of standard input
};
int run_cmd(const CmdOptions& options);

struct LogOptions {
    std::string ring;
    bool follow = false;
};
int run_log(const LogOptions& options);

}  // namespace nuvctl

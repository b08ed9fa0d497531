// SPDX-License-Identifier: Apache-2.0
// Messages and events, sent and received.
#include <ctime>
#include <iostream>
#include <iterator>
#include <span>
#include <stdexcept>

#include "commands/commands.hpp"
#include "commands/live_loop.hpp"
#include "commands/report.hpp"
#include "json/writer.hpp"
#include "text/text.hpp"
#include "text/timestamp.hpp"

namespace nuvctl {

namespace {

/// The data that the argument stands for.
std::string data_of(const std::string& argument) {
    if (argument != "-") {
        return argument + '\0';
    }
    return {std::istreambuf_iterator<char>(std::cin), {}};
}

int report_result(const std::string& name, int result) {
    if (result >= 0) {
        return 0;
    }
    report(problem_with(name, result));
    return 1;
}

Timestamp now() {
    timespec time{};
    clock_gettime(CLOCK_REALTIME, &time);
    return {time.tv_sec, static_cast<std::int32_t>(time.tv_nsec / 1000)};
}

void print_event(nuvipc* /*ipc*/, const char* event, void* data, unsigned size, void* /*ctx*/) {
    const std::span octets(static_cast<const std::uint8_t*>(data), size);
    write_object(std::cout, false, [&](Json& json) {
        json.text("time", to_string(now()).value_or(""));
        json.text("event", to_utf8(event));
        std::string_view text = as_text(octets);
        if (text.ends_with('\0')) {
            text.remove_suffix(1);
        }
        is_utf8(text) ? json.text("text", text) : json.text("hex", to_hex(octets));
    });
    std::cout.flush();
}

}  // namespace

int run_send(const SendOptions& options) {
    const std::string data = data_of(options.text);
    const LiveLoop live;
    return report_result(options.endpoint,
                         nuvipc_msg_send(live.ipc(), options.endpoint.c_str(), data.data(),
                                         static_cast<unsigned>(data.size())));
}

int run_emit(const EmitOptions& options) {
    const std::string data = options.text ? data_of(*options.text) : "";
    const LiveLoop live;
    const int result = nuvipc_event_send(live.ipc(), options.event.c_str(), data.data(),
                                         static_cast<unsigned>(data.size()));
    return report_result(options.event, result);
}

int run_events(const EventsOptions& options) {
    LiveLoop live;
    for (const std::string& name :
         options.names.empty() ? std::vector<std::string>{"*"} : options.names) {
        const int result =
            nuvipc_event_register_notifier(live.ipc(), name.c_str(), print_event, nullptr);
        if (result < 0) {
            return report_result(name, result);
        }
    }
    return live.run_until_stopped();
}

}  // namespace nuvctl

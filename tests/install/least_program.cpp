// SPDX-License-Identifier: Apache-2.0
// Above the least platform every record passes, and the time is that of the steady clock.
#include <chrono>
#include <string>

#include "nuv/dynamic_value.hpp"
#include "nuv/logging.hpp"

extern std::string records;

int main() {
    const auto steady = [] {
        return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch())
            .count();
    };
    const auto before = steady();
    const auto now = nuv::steady_now_ns();
    const bool good_clock = before <= now && now <= steady();

    nuv::logging::CloggerProxy logger("", true, true);
    logger.set_chunking(2);
    logger.config_set_snprintf_time_func(nullptr);
    logger.clogger_instance_show(nullptr, nullptr);
    logger.get_ostream(CLOGGER_DEBUG, "f", "g", 1, 0) << "a b";
    nuv::logging::ClogmodProxy module("module");
    module.set_loglevel(CLOGGER_ERROR);
    module.get_ostream(CLOGGER_TRACE, "f", "g", 1) << "c d";
    const bool good_log = records == "debug a b\ntrace c d\n" && logger.get_chunking() == 0 &&
                          module.get_loglevel() == CLOGGER_TRACE;
    return good_clock && good_log ? 0 : 1;
}

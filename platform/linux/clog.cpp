// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <chrono>
#include <string>

#include "platform/common/clog_core.hpp"

namespace nuv::platform::clog {

int add(clogger* logger, const Request& request) noexcept {
    return logger != nullptr ? logger->outputs.add(request) : -EINVAL;
}

int remove(clogger* logger, const Request& request) noexcept {
    return logger != nullptr ? logger->outputs.remove(request) : -EINVAL;
}

void write(clogger& logger, const clogmod* module, clogger_msg_info& info, const char* fmt,
           std::va_list args) noexcept {
    if (!passes(logger, module, info.level)) {
        return;
    }
    info.time_us = std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now())
                       .time_since_epoch()
                       .count();
    try {
        std::string buffer;
        info.text = format_text(buffer, fmt, args);
        logger.outputs.deliver(info);
    } catch (...) {  // no memory for the text
    }
}

}  // namespace nuv::platform::clog

using nuv::platform::clog::Registry;

extern "C" {

clogger* clogger_get(const char* name) {
    auto& registry = Registry::get();
    return name == nullptr ? registry.default_logger.load() : registry.loggers.find(name);
}

clogger* clogger_alloc(const char* name) {
    return name != nullptr ? Registry::get().loggers.find_or_make(name) : nullptr;
}

clogger* clogger_get_default_logger(void) { return Registry::get().default_logger; }

int clogger_set_default_logger(clogger* logger) {
    if (logger == nullptr) {
        return -EINVAL;
    }
    Registry::get().default_logger = logger;
    return 0;
}

int clogger_set_snprintf_time_func(clogger* logger, clogger_snprintf_time function) {
    return logger != nullptr ? logger->outputs.set_time_function(function) : -EINVAL;
}

clogmod* clogmod_get_or_alloc(const char* name) {
    return name != nullptr ? Registry::get().modules.find_or_make(name) : nullptr;
}

clogmod* clogmod_get_or_alloc_main(clogger* logger, const char* name) {
    clogmod* const module = logger != nullptr ? clogmod_get_or_alloc(name) : nullptr;
    if (module != nullptr) {
        module->bound = logger;
        logger->main_module = module;
    }
    return module;
}

void clogmod_set_loglevel(clogmod* module, int level) {
    if (module != nullptr) {
        module->level = level;
    }
}

}  // extern "C"

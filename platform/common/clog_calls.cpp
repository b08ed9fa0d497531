// SPDX-License-Identifier: Apache-2.0
// The C functions that say the same on every platform: each puts its arguments into a Request, or
// into a record.
#include <cerrno>
#include <exception>
#include <string>
#include <vector>

#include "platform/common/clog_core.hpp"

using namespace nuv::platform::clog;  // NOLINT(google-build-using-namespace)

extern "C" {

int clogger_enable_stderr(clogger* logger, uint16_t mask, uint16_t fields) {
    return add(logger, {.kind = Kind::STANDARD_ERROR, .mask = mask, .fields = fields});
}

int clogger_enable_stdout(clogger* logger, uint16_t mask, uint16_t fields) {
    return add(logger, {.kind = Kind::STANDARD_OUTPUT, .mask = mask, .fields = fields});
}

int clogger_enable_syslog(clogger* logger, uint16_t mask, uint16_t fields) {
    return add(logger, {.kind = Kind::SYSTEM_LOG, .mask = mask, .fields = fields});
}

int clogger_disable_stderr(clogger* logger) {
    return remove(logger, {.kind = Kind::STANDARD_ERROR});
}

int clogger_disable_stdout(clogger* logger) {
    return remove(logger, {.kind = Kind::STANDARD_OUTPUT});
}

int clogger_disable_syslog(clogger* logger) { return remove(logger, {.kind = Kind::SYSTEM_LOG}); }

int clogger_add_shringbuf(clogger* logger, const char* name, uint32_t size, uint16_t mask,
                          uint16_t fields) {
    return add(logger,
               {.kind = Kind::RING, .name = name, .size = size, .mask = mask, .fields = fields});
}

int clogger_rm_shringbuf(clogger* logger, const char* name) {
    return remove(logger, {.kind = Kind::RING, .name = name});
}

int clogger_add_file(clogger* logger, const char* path, uint32_t size,
                     const clogger_backup_style* style, uint16_t mask, uint16_t fields) {
    return add(logger, {.kind = Kind::LOG_FILE,
                        .name = path,
                        .size = size,
                        .style = style,
                        .mask = mask,
                        .fields = fields});
}

int clogger_rm_file(clogger* logger, const char* path) {
    return remove(logger, {.kind = Kind::LOG_FILE, .name = path});
}

int clogger_add_function(clogger* logger, clogger_function function, void* ctx, int newline,
                         uint16_t mask, uint16_t fields) {
    return add(logger, {.kind = Kind::FUNCTION,
                        .callback = reinterpret_cast<AnyFunction>(function),
                        .ctx = ctx,
                        .newline = newline != 0,
                        .mask = mask,
                        .fields = fields});
}

int clogger_rm_function(clogger* logger, clogger_function function, void* ctx) {
    return remove(
        logger,
        {.kind = Kind::FUNCTION, .callback = reinterpret_cast<AnyFunction>(function), .ctx = ctx});
}

int clogger_add_ext_function(clogger* logger, clogger_ext_function function, void* ctx, int newline,
                             uint16_t mask, uint16_t fields) {
    return add(logger, {.kind = Kind::EXT_FUNCTION,
                        .callback = reinterpret_cast<AnyFunction>(function),
                        .ctx = ctx,
                        .newline = newline != 0,
                        .mask = mask,
                        .fields = fields});
}

int clogger_rm_ext_function(clogger* logger, clogger_ext_function function, void* ctx) {
    return remove(logger, {.kind = Kind::EXT_FUNCTION,
                           .callback = reinterpret_cast<AnyFunction>(function),
                           .ctx = ctx});
}

int clogger_add_msg_filter(clogger* logger, clogger_msg_filter filter, void* ctx) {
    return add(
        logger,
        {.kind = Kind::FILTER, .callback = reinterpret_cast<AnyFunction>(filter), .ctx = ctx});
}

int clogger_rm_msg_filter(clogger* logger, clogger_msg_filter filter, void* ctx) {
    return remove(
        logger,
        {.kind = Kind::FILTER, .callback = reinterpret_cast<AnyFunction>(filter), .ctx = ctx});
}

const char* clogger_get_name(const clogger* logger) {
    return logger != nullptr ? logger->name.c_str() : nullptr;
}

int clogger_show(clogger* logger, clogger_printer printer, void* ctx) {
    if (logger == nullptr || printer == nullptr) {
        return -EINVAL;
    }
    try {
        const auto& registry = Registry::get();
        std::vector<std::string> lines = logger->outputs.describe();
        lines.insert(lines.begin(), "logger \"" + logger->name + '"' +
                                        (registry.default_logger == logger ? ", default" : ""));
        registry.modules.for_each([&](const clogmod& module) {
            if (module.logger() == logger) {
                lines.push_back("module \"" + module.name + "\" level " +
                                std::to_string(module.level));
            }
        });
        for (const auto& line : lines) {
            if (const int result = printer(ctx, "%s\n", line.c_str()); result < 0) {
                return result;
            }
        }
        return 0;
    } catch (const std::system_error& e) {
        return -e.code().value();
    } catch (const std::exception&) {
        return -ENOMEM;
    }
}

clogger* clogmod_get_clogger(clogmod* module) {
    return module != nullptr ? module->logger() : nullptr;
}

int clogmod_get_loglevel(clogmod* module) {
    return module != nullptr ? module->level.load(std::memory_order_relaxed) : -1;
}

}  // extern "C"

namespace {

void write_record(clogger* logger, const clogmod* module, int level, const char* file,
                  const char* function, int line, int debug_arg, const char* fmt,
                  std::va_list args) noexcept {
    if (logger == nullptr) {
        return;
    }
    clogger_msg_info info{.time_us = 0,
                          .logger = logger->name.c_str(),
                          .module = module != nullptr ? module->name.c_str() : "",
                          .file = file != nullptr ? file : "",
                          .function = function != nullptr ? function : "",
                          .text = "",
                          .line = line,
                          .level = level,
                          .debug_arg = debug_arg};
    write(*logger, module, info, fmt, args);
}

}  // namespace

// NOLINTBEGIN(cert-dcl50-cpp,bugprone-macro-parentheses)
#define NUV_RECORD(logger, module, level, debug_arg)                                 \
    std::va_list args;                                                               \
    va_start(args, fmt);                                                             \
    write_record(logger, module, level, file, function, line, debug_arg, fmt, args); \
    va_end(args)
#define NUV_LOGGER_CALL(name, level)                                                        \
    extern "C" void name(clogger* logger, const char* file, const char* function, int line, \
                         const char* fmt, ...) {                                            \
        NUV_RECORD(logger, nullptr, level, 0);                                              \
    }
#define NUV_MODULE_CALL(name, level)                                                        \
    extern "C" void name(clogmod* module, const char* file, const char* function, int line, \
                         const char* fmt, ...) {                                            \
        NUV_RECORD(clogmod_get_clogger(module), module, level, 0);                          \
    }

NUV_LOGGER_CALL(clogger__err, CLOGGER_ERROR)
NUV_LOGGER_CALL(clogger__warn, CLOGGER_WARN)
NUV_LOGGER_CALL(clogger__info, CLOGGER_INFO)
extern "C" void clogger__debug(clogger* logger, const char* file, const char* function, int line,
                               int debug_arg, const char* fmt, ...) {
    NUV_RECORD(logger, nullptr, CLOGGER_DEBUG, debug_arg);
}
NUV_MODULE_CALL(clogmod__err, CLOGGER_ERROR)
NUV_MODULE_CALL(clogmod__warn, CLOGGER_WARN)
NUV_MODULE_CALL(clogmod__info, CLOGGER_INFO)
NUV_MODULE_CALL(clogmod__debug, CLOGGER_DEBUG)
NUV_MODULE_CALL(clogmod__trace, CLOGGER_TRACE)
// NOLINTEND(cert-dcl50-cpp,bugprone-macro-parentheses)

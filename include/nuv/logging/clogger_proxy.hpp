// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

#include "nuv/export.hpp"
#include "nuv/logging/clog_stream_buf.hpp"
#include "nuv_platform/clog.h"

namespace nuv::logging {

/// A named logger of the platform; the empty name is the platform's default logger. What the
/// arguments of its outputs mean is told in nuv_platform/clog.h.
///
/// A record does not make its logger: records are dropped until the platform, get_clogger() or a
/// function that configures the logger has made it.
class NUV_EXPORT CloggerProxy {
public:
    CloggerProxy(const std::string& name, bool set_default, bool add_main_module);

    /// The logger, made when it does not exist yet; null when the platform has none.
    clogger* get_clogger() const;

    /// Makes `name` the main module of the logger; does nothing when it is null.
    void add_main_module(const char* name);
    void config_set_default() const;

    /// Each throws std::runtime_error naming the platform call when that refuses, and does nothing
    /// without a logger.
    void config_enable_stderr(std::uint16_t mask, std::uint16_t fields) const;
    void config_enable_stdout(std::uint16_t mask, std::uint16_t fields) const;
    void config_enable_syslog(std::uint16_t mask, std::uint16_t fields) const;
    void config_add_shringbuf(const char* name, std::uint32_t size, std::uint16_t mask,
                              std::uint16_t fields) const;
    void config_add_file(const char* path, std::uint32_t size, const clogger_backup_style* style,
                         std::uint16_t mask, std::uint16_t fields) const;
    void config_add_function(clogger_function function, void* ctx, bool newline, std::uint16_t mask,
                             std::uint16_t fields) const;
    void config_add_ext_function(clogger_ext_function function, void* ctx, bool newline,
                                 std::uint16_t mask, std::uint16_t fields) const;
    void config_add_msg_filter(clogger_msg_filter filter, void* ctx) const;

    /// Nothing happens where there is nothing to remove.
    void config_disable_stderr() const;
    void config_disable_stdout() const;
    void config_disable_syslog() const;
    void config_rm_shringbuf(const char* name) const;
    void config_rm_file(const char* path) const;
    void config_rm_function(clogger_function function, void* ctx) const;
    void config_rm_ext_function(clogger_ext_function function, void* ctx) const;
    void config_rm_msg_filter(clogger_msg_filter filter, void* ctx) const;

    void config_set_snprintf_time_func(clogger_snprintf_time function) const;
    void clogger_instance_show(clogger_printer printer, void* ctx) const;

    /// The stream of one record; levels 0 error, 1 warning, 2 info, 3 debug, any other gives a
    /// stream that discards its text. `file` and `function` may be null. The platform's debug call
    /// gets `debug_arg`, the other levels drop it.
    ClogStreamBuf get_ostream(std::int32_t level, const char* file, const char* function,
                              std::int32_t line, std::int32_t debug_arg) const;

    /// The default chunk size of this logger; 0 without a logger.
    std::uint32_t get_chunking() const;
    void set_chunking(std::uint32_t size);

private:
    std::string name_;
};

}  // namespace nuv::logging

// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/clogger_proxy.hpp"

#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "internal/optional_platform.hpp"
#include "nuv/logging/clog_adapter.hpp"

namespace nuv::logging {

namespace {

// The one rule of all outputs: no logger, nothing to do; a refusal becomes an exception.
template <typename Call, typename... Args>
void configure(const CloggerProxy& proxy, const char* name, Call call, Args... args) {
    clogger* const logger = proxy.get_clogger();
    if (logger != nullptr && call(logger, args...) != 0) {
        throw std::runtime_error(std::string(name) + "() failed!");
    }
}

// Results do not matter: what cannot be removed is not there.
template <typename Call, typename... Args>
void forward(const CloggerProxy& proxy, Call call, Args... args) {
    if (clogger* const logger = proxy.get_clogger()) {
        impl::call_if_present(call, logger, args...);
    }
}

}  // namespace

CloggerProxy::CloggerProxy(const std::string& name, bool set_default, bool add_main_module)
    : name_(name) {
    if (set_default) {
        config_set_default();
    }
    if (add_main_module) {
        this->add_main_module(name.c_str());
    }
}

clogger* CloggerProxy::get_clogger() const {
    if (name_.empty()) {
        return impl::default_logger();
    }
    clogger* const logger = clogger_get(name_.c_str());
    return logger != nullptr ? logger : clogger_alloc(name_.c_str());
}

void CloggerProxy::add_main_module(const char* name) {
    if (name != nullptr) {
        forward(*this, clogmod_get_or_alloc_main, name);
    }
}

void CloggerProxy::config_set_default() const { forward(*this, clogger_set_default_logger); }

// The platform call is named once: for the call and for the message.
#define CONFIGURE(function, ...) configure(*this, #function, function __VA_OPT__(, ) __VA_ARGS__)

void CloggerProxy::config_enable_stderr(std::uint16_t mask, std::uint16_t fields) const {
    CONFIGURE(clogger_enable_stderr, mask, fields);
}

void CloggerProxy::config_enable_stdout(std::uint16_t mask, std::uint16_t fields) const {
    CONFIGURE(clogger_enable_stdout, mask, fields);
}

void CloggerProxy::config_enable_syslog(std::uint16_t mask, std::uint16_t fields) const {
    CONFIGURE(clogger_enable_syslog, mask, fields);
}

void CloggerProxy::config_add_shringbuf(const char* name, std::uint32_t size, std::uint16_t mask,
                                        std::uint16_t fields) const {
    CONFIGURE(clogger_add_shringbuf, name, size, mask, fields);
}

void CloggerProxy::config_add_file(const char* path, std::uint32_t size,
                                   const clogger_backup_style* style, std::uint16_t mask,
                                   std::uint16_t fields) const {
    CONFIGURE(clogger_add_file, path, size, style, mask, fields);
}

void CloggerProxy::config_add_function(clogger_function function, void* ctx, bool newline,
                                       std::uint16_t mask, std::uint16_t fields) const {
    CONFIGURE(clogger_add_function, function, ctx, newline, mask, fields);
}

void CloggerProxy::config_add_ext_function(clogger_ext_function function, void* ctx, bool newline,
                                           std::uint16_t mask, std::uint16_t fields) const {
    CONFIGURE(clogger_add_ext_function, function, ctx, newline, mask, fields);
}

void CloggerProxy::config_add_msg_filter(clogger_msg_filter filter, void* ctx) const {
    CONFIGURE(clogger_add_msg_filter, filter, ctx);
}

#undef CONFIGURE

void CloggerProxy::config_disable_stderr() const { forward(*this, clogger_disable_stderr); }
void CloggerProxy::config_disable_stdout() const { forward(*this, clogger_disable_stdout); }
void CloggerProxy::config_disable_syslog() const { forward(*this, clogger_disable_syslog); }

void CloggerProxy::config_rm_shringbuf(const char* name) const {
    forward(*this, clogger_rm_shringbuf, name);
}

void CloggerProxy::config_rm_file(const char* path) const { forward(*this, clogger_rm_file, path); }

void CloggerProxy::config_rm_function(clogger_function function, void* ctx) const {
    forward(*this, clogger_rm_function, function, ctx);
}

void CloggerProxy::config_rm_ext_function(clogger_ext_function function, void* ctx) const {
    forward(*this, clogger_rm_ext_function, function, ctx);
}

void CloggerProxy::config_rm_msg_filter(clogger_msg_filter filter, void* ctx) const {
    forward(*this, clogger_rm_msg_filter, filter, ctx);
}

void CloggerProxy::config_set_snprintf_time_func(clogger_snprintf_time function) const {
    forward(*this, clogger_set_snprintf_time_func, function);
}

void CloggerProxy::clogger_instance_show(clogger_printer printer, void* ctx) const {
    forward(*this, clogger_show, printer, ctx);
}

ClogStreamBuf CloggerProxy::get_ostream(std::int32_t level, const char* file, const char* function,
                                        std::int32_t line, std::int32_t debug_arg) const {
    const auto stream = [&]<auto Log>(auto... extra) {
        return ClogStreamBuf(ClogAdapter<clogger, Log, decltype(extra)...>::make(
            name_, file, function, line, extra...));
    };
    switch (level) {
        case CLOGGER_ERROR:
            return stream.operator()<&clogger__err>();
        case CLOGGER_WARN:
            return stream.operator()<&clogger__warn>();
        case CLOGGER_INFO:
            return stream.operator()<&clogger__info>();
        case CLOGGER_DEBUG:
            return stream.operator()<&clogger__debug>(debug_arg);
        default:
            return ClogStreamBuf();
    }
}

std::uint32_t CloggerProxy::get_chunking() const { return get_clogger_chunking(get_clogger()); }

void CloggerProxy::set_chunking(std::uint32_t size) {
    if (const char* const name = impl::call_if_present(clogger_get_name, get_clogger())) {
        set_default_clogger_chunking(name, size);
    }
}

}  // namespace nuv::logging

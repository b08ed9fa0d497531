// SPDX-License-Identifier: Apache-2.0
#define SPDLOG_PREVENT_CHILD_FD

#include <fcntl.h>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/sinks/syslog_sink.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <limits>
#include <system_error>
#include <utility>

#include "platform/common/clog_core.hpp"
#include "platform/linux/clog_ring.hpp"

namespace nuv::platform::clog {

namespace {

// The lines come complete, newline included.
template <typename Inner, typename... Args>
std::unique_ptr<Inner> make_inner(Args&&... args) {
    auto inner = std::make_unique<Inner>(std::forward<Args>(args)...);
    inner->set_formatter(
        std::make_unique<spdlog::pattern_formatter>("%v", spdlog::pattern_time_type::utc, ""));
    return inner;
}

spdlog::details::log_msg as_message(const clogger_msg_info& info, std::string_view line) {
    constexpr std::array LEVELS = {spdlog::level::err, spdlog::level::warn, spdlog::level::info,
                                   spdlog::level::debug, spdlog::level::trace};
    return {spdlog::log_clock::time_point{},
            {},
            {},
            LEVELS[static_cast<std::size_t>(info.level)],
            spdlog::string_view_t(line.data(), line.size())};
}

template <typename Inner>
class StreamSink final : public Sink {
public:
    template <typename... Args>
    explicit StreamSink(Args&&... args) : inner_(make_inner<Inner>(std::forward<Args>(args)...)) {}

    void write(const clogger_msg_info& info, std::string_view line) override {
        inner_->log(as_message(info, line));
    }

private:
    std::unique_ptr<Inner> inner_;
};

class FileSink final : public Sink {
public:
    explicit FileSink(const Request& request)
        : path_(request.name),
          size_(request.size != 0 ? request.size : std::numeric_limits<std::size_t>::max()),
          backups_(request.style != nullptr ? request.style->files : 1) {
        open(request.style != nullptr && request.style->rotate_on_open != 0);
    }

    void write(const clogger_msg_info& info, std::string_view line) override {
        if (inner_ == nullptr) {
            open(false);
        }
        try {
            inner_->log(as_message(info, line));
            inner_->flush();
        } catch (...) {
            inner_ = nullptr;  // it may have closed its file and does not notice
            throw;
        }
    }

private:
    using Inner = spdlog::sinks::rotating_file_sink_st;

    // Tried here first: the sink would sleep, make folders, and keep the reason to itself.
    void open(bool rotate) {
        const int fd = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
        if (fd < 0) {
            throw std::system_error(errno, std::system_category());
        }
        ::close(fd);
        inner_ = make_inner<Inner>(path_, size_, backups_, rotate);
    }

    std::string path_;
    std::size_t size_;
    std::size_t backups_;
    std::unique_ptr<Inner> inner_;
};

}  // namespace

std::unique_ptr<Sink> open_sink(const Request& request) {
    switch (request.kind) {
        case Kind::STANDARD_ERROR:
            return std::make_unique<StreamSink<spdlog::sinks::stderr_sink_st>>();
        case Kind::STANDARD_OUTPUT:
            return std::make_unique<StreamSink<spdlog::sinks::stdout_sink_st>>();
        case Kind::SYSTEM_LOG:
            return std::make_unique<StreamSink<spdlog::sinks::syslog_sink_st>>("", LOG_PID,
                                                                               LOG_DAEMON, false);
        case Kind::RING:
            return std::make_unique<RingSink>(request.name, request.size);
        default:
            return std::make_unique<FileSink>(request);
    }
}

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

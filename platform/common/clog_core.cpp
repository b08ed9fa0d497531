// SPDX-License-Identifier: Apache-2.0
#include "platform/common/clog_core.hpp"

#include <pthread.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <new>
#include <system_error>
#include <type_traits>
#include <utility>

namespace nuv::platform::clog {

namespace {

constexpr std::array LEVEL_NAMES = {"ERROR", "WARN", "INFO", "DEBUG", "TRACE"};

// Set while this thread runs callbacks or fork handlers, under the lock of a logger.
thread_local bool delivering = false;

thread_local bool forking = false;
std::mutex fork_mutex;  // or two threads that fork might lock the loggers in different orders

// A fork waits for the records under way, so that the child finds no logger locked. A callback that
// forks has the lock of its logger and must not wait for the others: their callbacks may fork, too.
// Its child inherits `delivering`, so nothing that it calls waits for a lock.
void before_fork() noexcept {
    if (!delivering) {
        fork_mutex.lock();
        Registry::get().loggers.for_each([](clogger& logger) { logger.outputs.before_fork(); });
        delivering = forking = true;  // handlers of others may log
    }
}

template <void (Outputs::*Release)() noexcept>
void after_fork() noexcept {
    if (forking) {
        Registry::get().loggers.for_each([](clogger& logger) { (logger.outputs.*Release)(); });
        delivering = forking = false;
        fork_mutex.unlock();
    }
}

template <typename Action>
int guarded(Action action) noexcept {
    if (delivering) {
        return -EDEADLK;
    }
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    } catch (const std::system_error& e) {
        return -e.code().value();
    } catch (...) {
        return -EIO;
    }
}

class FunctionSink final : public Sink {
public:
    FunctionSink(clogger_function function, void* ctx) : function_(function), ctx_(ctx) {}
    void write(const clogger_msg_info& /*info*/, std::string_view line) override {
        function_(ctx_, line.data());
    }

private:
    clogger_function function_;
    void* ctx_;
};

class ExtFunctionSink final : public Sink {
public:
    ExtFunctionSink(clogger_ext_function function, void* ctx) : function_(function), ctx_(ctx) {}
    void write(const clogger_msg_info& info, std::string_view line) override {
        function_(ctx_, &info, line.data());
    }

private:
    clogger_ext_function function_;
    void* ctx_;
};

std::unique_ptr<Sink> make_sink(const Request& request) {
    switch (request.kind) {
        case Kind::FILTER:
            return nullptr;
        case Kind::FUNCTION:
            return std::make_unique<FunctionSink>(
                reinterpret_cast<clogger_function>(request.callback), request.ctx);
        case Kind::EXT_FUNCTION:
            return std::make_unique<ExtFunctionSink>(
                reinterpret_cast<clogger_ext_function>(request.callback), request.ctx);
        default:
            return open_sink(request);
    }
}

void append_digits(std::string& line, std::int64_t number, std::size_t width, char after) {
    line.append(width, '0');
    for (auto digit = line.rbegin(); number != 0 && width != 0; ++digit, --width, number /= 10) {
        *digit = static_cast<char>('0' + number % 10);
    }
    line += after;
}

void append_time(std::string& line, std::int64_t time_us, clogger_snprintf_time function) {
    if (function != nullptr) {
        std::array<char, 64> text{};
        if (function(text.data(), text.size()) > 0) {
            line.append(text.data(), ::strnlen(text.data(), text.size()));
        }
        return;
    }
    namespace chrono = std::chrono;
    const chrono::sys_time<chrono::milliseconds> time(
        chrono::floor<chrono::milliseconds>(chrono::microseconds(time_us)));
    const auto day = chrono::floor<chrono::days>(time);
    const chrono::year_month_day date(day);
    const chrono::hh_mm_ss clock(time - day);
    append_digits(line, static_cast<int>(date.year()), 4, '-');
    append_digits(line, static_cast<unsigned>(date.month()), 2, '-');
    append_digits(line, static_cast<unsigned>(date.day()), 2, 'T');
    append_digits(line, clock.hours().count(), 2, ':');
    append_digits(line, clock.minutes().count(), 2, ':');
    append_digits(line, clock.seconds().count(), 2, '.');
    append_digits(line, clock.subseconds().count(), 3, 'Z');
}

void append_source(std::string& line, const clogger_msg_info& info) {
    if (*info.file != '\0') {
        line.append(info.file).append(":").append(std::to_string(info.line));
        line.append(*info.function != '\0' ? " " : "");
    }
    line.append(info.function);
}

// What an output that people or tools read line by line gets for a text that may come from outside.
// The newline at the beginning is that of a chunk of a longer record.
void append_escaped(std::string& line, std::string_view text) {
    constexpr std::string_view DIGITS = "0123456789abcdef";
    const auto is_control = [](unsigned char octet) { return octet < 0x20 || octet == 0x7F; };
    auto plain = text.begin() + (text.starts_with('\n') ? 1 : 0);
    line.append(text.begin(), plain);
    for (;;) {
        const auto control = std::find_if(plain, text.end(), is_control);
        line.append(plain, control);
        if (control == text.end()) {
            return;
        }
        const auto octet = static_cast<unsigned char>(*control);
        line.append({'\\', 'x', DIGITS[octet >> 4U], DIGITS[octet & 0xFU]});
        plain = control + 1;
    }
}

void append_line(std::string& line, const clogger_msg_info& info, unsigned fields,
                 clogger_snprintf_time time_function, bool escaped) {
    const auto field = [&](clogger_field bit, auto append) {
        const auto before = line.size();
        if ((fields & bit) != 0) {
            append();
        }
        if (line.size() != before) {
            line += ' ';
        }
    };
    field(CLOGGER_FIELD_TIME, [&] { append_time(line, info.time_us, time_function); });
    field(CLOGGER_FIELD_LEVEL, [&] { line += LEVEL_NAMES[static_cast<std::size_t>(info.level)]; });
    field(CLOGGER_FIELD_MODULE, [&] { line += *info.module != '\0' ? info.module : info.logger; });
    field(CLOGGER_FIELD_SOURCE, [&] { append_source(line, info); });
    if (!line.empty()) {
        line.back() = ':';
        line += ' ';
    }
    escaped ? append_escaped(line, info.text) : void(line += info.text);
}

}  // namespace

bool Request::valid() const noexcept {
    switch (kind) {
        case Kind::RING:
            return name != nullptr && *name != '\0' && std::strlen(name) <= 200 &&
                   std::strchr(name, '/') == nullptr && size >= 1024 && size <= (1U << 30);
        case Kind::LOG_FILE:
            return name != nullptr && *name != '\0';
        case Kind::FUNCTION:
        case Kind::EXT_FUNCTION:
        case Kind::FILTER:
            return callback != nullptr;
        default:
            return true;
    }
}

bool Outputs::Output::is(const Request& request) const noexcept {
    return kind == request.kind && callback == request.callback && ctx == request.ctx &&
           name == (request.name != nullptr ? request.name : "");
}

std::vector<Outputs::Output>::iterator Outputs::find(const Request& request) {
    return std::find_if(outputs_.begin(), outputs_.end(),
                        [&](const Output& output) { return output.is(request); });
}

int Outputs::add(const Request& request) noexcept {
    return guarded([&] {
        if (!request.valid()) {
            return -EINVAL;
        }
        const auto fields = request.fields != 0 ? request.fields : traits(request.kind).fields;
        const std::lock_guard lock(mutex_);
        const auto found = find(request);
        if (found == outputs_.end()) {
            outputs_.push_back({request.kind, request.name != nullptr ? request.name : "",
                                request.callback, request.ctx,
                                request.newline || traits(request.kind).newline, request.mask,
                                fields, make_sink(request)});
        } else if (request.kind <= Kind::SYSTEM_LOG) {
            found->mask = request.mask;
            found->fields = fields;
        } else {
            return -EEXIST;
        }
        update_taken();
        return 0;
    });
}

int Outputs::remove(const Request& request) noexcept {
    return guarded([&] {
        const std::lock_guard lock(mutex_);
        const auto found = find(request);
        if (found == outputs_.end()) {
            return -ENOENT;
        }
        outputs_.erase(found);
        update_taken();
        return 0;
    });
}

int Outputs::set_time_function(clogger_snprintf_time function) noexcept {
    return guarded([&] {
        const std::lock_guard lock(mutex_);
        time_function_ = function;
        return 0;
    });
}

void Outputs::clear() {
    const std::lock_guard lock(mutex_);
    outputs_.clear();
    time_function_ = nullptr;
    update_taken();
}

void Outputs::before_fork() noexcept {
    mutex_.lock();
    forking_ = true;
}

void Outputs::after_fork_in_parent() noexcept {
    if (std::exchange(forking_, false)) {  // else the logger was made meanwhile
        mutex_.unlock();
    }
}

void Outputs::after_fork_in_child() noexcept {
    if (!forking_) {  // made meanwhile by a thread that the child lacks: it begins without outputs
        std::construct_at(this);
        return;
    }
    std::erase_if(outputs_, [](const Output& output) {
        return output.sink != nullptr && !output.sink->inherited();
    });
    update_taken();
    after_fork_in_parent();
}

void Outputs::own(bool own) noexcept {
    const std::lock_guard lock(mutex_);
    for (const auto& output : outputs_) {
        if (output.sink != nullptr) {
            output.sink->own(own);
        }
    }
}

void Outputs::update_taken() {
    unsigned taken = 0;
    for (const auto& output : outputs_) {
        taken |= output.sink != nullptr ? output.mask : 0U;
    }
    taken_.store(taken, std::memory_order_relaxed);
}

void Outputs::deliver(const clogger_msg_info& info) noexcept {
    if (delivering) {
        return;
    }
    const std::lock_guard lock(mutex_);
    delivering = true;
    const bool pass = std::all_of(outputs_.begin(), outputs_.end(), [&](const Output& output) {
        return output.kind != Kind::FILTER ||
               reinterpret_cast<clogger_msg_filter>(output.callback)(output.ctx, &info) != 0;
    });
    for (const auto& output : outputs_) {
        if (pass && output.sink != nullptr && ((output.mask >> info.level) & 1) != 0) {
            try {
                output.sink->write(info, compose(output, info));
            } catch (...) {  // this output cannot take it; the others may
            }
        }
    }
    delivering = false;
}

std::string_view Outputs::compose(const Output& output, const clogger_msg_info& info) {
    const bool escaped = output.kind < Kind::FUNCTION;
    if (output.fields == CLOGGER_FIELD_NONE && !output.newline && !escaped) {
        return info.text;
    }
    line_.clear();
    append_line(line_, info, output.fields, time_function_, escaped);
    if (output.newline) {
        line_ += '\n';
    }
    return line_;
}

std::vector<std::string> Outputs::describe() const {
    if (delivering) {
        throw std::system_error(EDEADLK, std::generic_category());
    }
    const std::lock_guard lock(mutex_);
    std::vector<std::string> lines;
    for (const auto& output : outputs_) {
        std::string line = traits(output.kind).add;
        if (!output.name.empty()) {
            line += " \"" + output.name + '"';
        }
        if (output.sink != nullptr) {
            line +=
                " mask " + std::to_string(output.mask) + " fields " + std::to_string(output.fields);
        }
        lines.push_back(std::move(line));
    }
    return lines;
}

Registry::Registry() {
    ::pthread_atfork(before_fork, after_fork<&Outputs::after_fork_in_parent>,
                     after_fork<&Outputs::after_fork_in_child>);
    set_up_default_logger();
}

Registry& Registry::get() {
    // Static objects of others log from their destructors.
    static_assert(std::is_trivially_destructible_v<Registry>);
    static Registry registry;
    return registry;
}

void Registry::set_up_default_logger() {
    clogger* const logger = loggers.find_or_make("default");
    if (logger != nullptr) {
        logger->outputs.add({.kind = Kind::STANDARD_ERROR, .mask = 0x1F});
    }
    default_logger = logger;
}

bool passes(const clogger& logger, const clogmod* module, int level) noexcept {
    if (module == nullptr) {
        module = logger.main_module.load(std::memory_order_acquire);
    }
    const int limit =
        module != nullptr ? module->level.load(std::memory_order_relaxed) : CLOGGER_INFO;
    return level <= limit && logger.outputs.take(level);
}

const char* format_text(std::string& buffer, const char* fmt, std::va_list args) {
    if (std::strcmp(fmt, "%s") == 0) {  // what all C++ callers use
        const char* const text = va_arg(args, const char*);
        return text != nullptr ? text : "(null)";
    }
    std::va_list again;
    va_copy(again, args);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): the callers start `args`
    const int size = std::vsnprintf(nullptr, 0, fmt, again);
    va_end(again);
    if (size > 0) {
        buffer.resize(static_cast<std::size_t>(size));
        std::vsnprintf(buffer.data(), buffer.size() + 1, fmt, args);
    }
    return buffer.c_str();
}

}  // namespace nuv::platform::clog

clogger* clogmod::logger() const noexcept {
    clogger* const own = bound.load(std::memory_order_acquire);
    return own != nullptr ? own
                          : nuv::platform::clog::Registry::get().default_logger.load(
                                std::memory_order_acquire);
}

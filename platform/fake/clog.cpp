// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <chrono>
#include <locale>
#include <mutex>
#include <optional>
#include <set>
#include <sstream>
#include <utility>

#include "nuv_platform/fake/fake_platform.hpp"
#include "platform/common/clog_core.hpp"
#include "platform/fake/call_text.hpp"

using nuv::platform::FakeLog;
using nuv::platform::FakePlatform;
using nuv::platform::clog::Registry;

struct FakeLog::State {
    mutable std::mutex mutex;
    std::vector<Record> records;
    std::set<const clogger*> loggers;  // those that exist for this platform
};

namespace nuv::platform {

namespace {

std::vector<std::string> refusable_calls() {
    std::vector<std::string> calls = {"clogger_get",
                                      "clogger_alloc",
                                      "clogger_get_default_logger",
                                      "clogger_set_default_logger",
                                      "clogger_set_snprintf_time_func",
                                      "clogmod_get_or_alloc",
                                      "clogmod_get_or_alloc_main",
                                      "clogmod_set_loglevel"};
    for (const auto& kind : clog::KINDS) {
        calls.insert(calls.end(), {kind.add, kind.remove});
    }
    return calls;
}

}  // namespace

FakeLog::FakeLog(std::vector<std::string>& shared_journal)
    : FakeService(shared_journal, refusable_calls()), state_(std::make_unique<State>()) {
    // Handles outlive the platform, so the state behind them is put back to the beginning.
    auto& registry = Registry::get();
    registry.loggers.for_each([](clogger& logger) {
        logger.outputs.clear();
        logger.main_module = nullptr;
    });
    registry.modules.for_each([](clogmod& module) {
        module.level = CLOGGER_INFO;
        module.bound = nullptr;
    });
    registry.set_up_default_logger();
    state_->loggers = {registry.default_logger};
}

FakeLog::~FakeLog() = default;

std::ostream& operator<<(std::ostream& os, const FakeLog::Record& record) {
    return os << '{' << record.level << ", \"" << record.logger << "\", \"" << record.module
              << "\", \"" << record.file << "\", \"" << record.function << "\", " << record.line
              << ", " << record.debug_arg << ", \"" << record.text << "\"}";
}

std::vector<FakeLog::Record> FakeLog::records() const {
    const std::lock_guard lock(state_->mutex);
    return state_->records;
}

std::vector<std::string> FakeLog::texts() const {
    std::vector<std::string> texts;
    for (auto& record : records()) {
        texts.push_back(std::move(record.text));
    }
    return texts;
}

void FakeLog::clear_records() {
    const std::lock_guard lock(state_->mutex);
    state_->records.clear();
}

std::vector<std::string> FakeLog::leftovers() const {
    std::vector<std::string> left;
    // A logger locks itself before the records, so not the other way here.
    const auto loggers = [this] {
        const std::lock_guard lock(state_->mutex);
        return state_->loggers;
    }();
    for (const auto* logger : loggers) {
        for (const auto& output : logger->outputs.describe()) {
            // The one output that is there from the beginning.
            if (logger->name != "default" || !output.starts_with("clogger_enable_stderr")) {
                left.push_back('"' + logger->name + "\": " + output);
            }
        }
    }
    return left;
}

namespace {

const char* shown(clogger* logger) { return clogger_get_name(logger); }
const char* shown(clogmod* module) { return module != nullptr ? module->name.c_str() : nullptr; }
Shown shown(const clogger_backup_style* style) {
    return {style == nullptr ? "NULL"
                             : "&{" + std::to_string(style->files) + ", " +
                                   std::to_string(style->rotate_on_open) + '}'};
}
template <typename T>
T shown(T other) {
    return other;
}

// The answer that the test wants instead of the real one.
std::optional<int> refused(const char* function) {
    auto* const fake = FakePlatform::current();
    return fake == nullptr ? -ENODEV : fake->log().take_failure(function);
}

template <typename... Args>
std::optional<int> log_call(const char* function, Args... args) {
    auto* const fake = FakePlatform::current();
    return fake == nullptr ? -ENODEV : noted(fake->log(), function, shown(args)...);
}

}  // namespace

namespace clog {

namespace {

std::optional<int> note_request(const char* function, clogger* logger, const Request& request,
                                bool adding) {
    switch (request.kind) {
        case Kind::RING:
            return adding ? log_call(function, logger, request.name, request.size, request.mask,
                                     request.fields)
                          : log_call(function, logger, request.name);
        case Kind::LOG_FILE:
            return adding ? log_call(function, logger, request.name, request.size, request.style,
                                     request.mask, request.fields)
                          : log_call(function, logger, request.name);
        case Kind::FUNCTION:
        case Kind::EXT_FUNCTION:
            return adding ? log_call(function, logger, request.callback, request.ctx,
                                     request.newline, request.mask, request.fields)
                          : log_call(function, logger, request.callback, request.ctx);
        case Kind::FILTER:
            return log_call(function, logger, request.callback, request.ctx);
        default:
            return adding ? log_call(function, logger, request.mask, request.fields)
                          : log_call(function, logger);
    }
}

// Takes lines and keeps none: the records are kept where they come in.
class NullSink final : public Sink {
public:
    void write(const clogger_msg_info& /*info*/, std::string_view /*line*/) override {}
};

}  // namespace

int add(clogger* logger, const Request& request) noexcept {
    if (const auto result = note_request(traits(request.kind).add, logger, request, true)) {
        return *result;
    }
    return logger != nullptr ? logger->outputs.add(request) : -EINVAL;
}

int remove(clogger* logger, const Request& request) noexcept {
    if (const auto result = note_request(traits(request.kind).remove, logger, request, false)) {
        return *result;
    }
    return logger != nullptr ? logger->outputs.remove(request) : -EINVAL;
}

void write(clogger& logger, const clogmod* module, clogger_msg_info& info, const char* fmt,
           std::va_list args) noexcept {
    auto* const fake = FakePlatform::current();
    if (fake == nullptr) {
        return;
    }
    info.time_us =
        std::chrono::duration_cast<std::chrono::microseconds>(fake->clock().now()).count();
    try {
        std::string buffer;
        info.text = format_text(buffer, fmt, args);
        {
            auto& state = fake->log().state();
            const std::lock_guard lock(state.mutex);
            state.records.push_back({info.level, info.logger, info.module, info.file, info.function,
                                     info.line, info.debug_arg, info.text});
        }
        if (passes(logger, module, info.level)) {
            logger.outputs.deliver(info);
        }
    } catch (const std::bad_alloc&) {  // no memory for the record
    }
}

std::unique_ptr<Sink> open_sink(const Request& /*request*/) { return std::make_unique<NullSink>(); }

}  // namespace clog
}  // namespace nuv::platform

using nuv::platform::log_call;
using nuv::platform::refused;

extern "C" {

clogger* clogger_get(const char* name) {
    if (refused(__func__)) {
        return nullptr;
    }
    auto& registry = Registry::get();
    clogger* const logger =
        name == nullptr ? registry.default_logger.load() : registry.loggers.find(name);
    auto& state = FakePlatform::current()->log().state();
    const std::lock_guard lock(state.mutex);
    return state.loggers.contains(logger) ? logger : nullptr;
}

clogger* clogger_alloc(const char* name) {
    if (log_call(__func__, name) || name == nullptr) {
        return nullptr;
    }
    clogger* const logger = Registry::get().loggers.find_or_make(name);
    if (logger != nullptr) {
        auto& state = FakePlatform::current()->log().state();
        const std::lock_guard lock(state.mutex);
        state.loggers.insert(logger);
    }
    return logger;
}

clogger* clogger_get_default_logger(void) {
    return refused(__func__) ? nullptr : Registry::get().default_logger.load();
}

int clogger_set_default_logger(clogger* logger) {
    if (const auto result = log_call(__func__, logger)) {
        return *result;
    }
    if (logger == nullptr) {
        return -EINVAL;
    }
    Registry::get().default_logger = logger;
    return 0;
}

int clogger_set_snprintf_time_func(clogger* logger, clogger_snprintf_time function) {
    if (const auto result = log_call(
            __func__, logger, reinterpret_cast<nuv::platform::clog::AnyFunction>(function))) {
        return *result;
    }
    return logger != nullptr ? logger->outputs.set_time_function(function) : -EINVAL;
}

clogmod* clogmod_get_or_alloc(const char* name) {
    return refused(__func__) || name == nullptr ? nullptr
                                                : Registry::get().modules.find_or_make(name);
}

clogmod* clogmod_get_or_alloc_main(clogger* logger, const char* name) {
    if (log_call(__func__, logger, name) || logger == nullptr) {
        return nullptr;
    }
    clogmod* const module = name == nullptr ? nullptr : Registry::get().modules.find_or_make(name);
    if (module != nullptr) {
        module->bound = logger;
        logger->main_module = module;
    }
    return module;
}

void clogmod_set_loglevel(clogmod* module, int level) {
    if (!log_call(__func__, module, level) && module != nullptr) {
        module->level = level;
    }
}

}  // extern "C"

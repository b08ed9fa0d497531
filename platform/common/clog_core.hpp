// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "nuv_platform/clog.h"

/// What every implementation of the logger has in common: loggers and modules by name, outputs,
/// filters, the making of lines, and those C functions that only put their arguments into a
/// Request. An implementation adds what is declared at the end.
namespace nuv::platform::clog {

enum class Kind : std::uint8_t {
    STANDARD_ERROR,
    STANDARD_OUTPUT,
    SYSTEM_LOG,
    RING,
    LOG_FILE,
    FUNCTION,
    EXT_FUNCTION,
    FILTER
};

struct KindTraits {
    const char* add;       ///< the C function that adds one
    const char* remove;    ///< and the one that removes it
    std::uint16_t fields;  ///< what 0 stands for
    bool newline;
};

inline constexpr std::uint16_t LINE_FIELDS =
    CLOGGER_FIELD_TIME | CLOGGER_FIELD_LEVEL | CLOGGER_FIELD_MODULE;
inline constexpr std::array<KindTraits, 8> KINDS = {{
    {"clogger_enable_stderr", "clogger_disable_stderr", LINE_FIELDS, true},
    {"clogger_enable_stdout", "clogger_disable_stdout", LINE_FIELDS, true},
    {"clogger_enable_syslog", "clogger_disable_syslog", CLOGGER_FIELD_MODULE, false},
    {"clogger_add_shringbuf", "clogger_rm_shringbuf", LINE_FIELDS, true},
    {"clogger_add_file", "clogger_rm_file", LINE_FIELDS, true},
    {"clogger_add_function", "clogger_rm_function", CLOGGER_FIELD_NONE, false},
    {"clogger_add_ext_function", "clogger_rm_ext_function", CLOGGER_FIELD_NONE, false},
    {"clogger_add_msg_filter", "clogger_rm_msg_filter", 0, false},
}};

constexpr const KindTraits& traits(Kind kind) { return KINDS[static_cast<std::size_t>(kind)]; }

using AnyFunction = void (*)();

/// One call that adds or removes an output or a filter, as it was made. Kind, name, callback and
/// context are its key.
struct Request {
    Kind kind{};
    const char* name = nullptr;
    AnyFunction callback = nullptr;
    void* ctx = nullptr;
    std::uint32_t size = 0;
    const clogger_backup_style* style = nullptr;
    bool newline = false;
    std::uint16_t mask = 0;
    std::uint16_t fields = 0;

    bool valid() const noexcept;
};

/// Where the lines of one output go.
class Sink {
public:
    Sink() = default;
    virtual ~Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    /// `line` ends in a NUL that does not count. May throw; the line is lost then.
    virtual void write(const clogger_msg_info& info, std::string_view line) = 0;

    /// Whether a forked child has this output, too.
    virtual bool inherited() const { return true; }

    /// A child that inherits it takes it over (true), and its parent leaves it to the child (false).
    virtual void own(bool /*own*/) {}
};

/// The outputs and filters of one logger. The int results are those of clog.h.
class Outputs {
public:
    int add(const Request& request) noexcept;
    int remove(const Request& request) noexcept;
    int set_time_function(clogger_snprintf_time function) noexcept;
    void clear();

    /// Whether any output takes records of this level.
    bool take(int level) const noexcept { return ((taken_ >> level) & 1) != 0; }
    void deliver(const clogger_msg_info& info) noexcept;

    /// No other thread is at work on these outputs between the first of these and one of the others.
    void before_fork() noexcept;
    void after_fork_in_parent() noexcept;
    void after_fork_in_child() noexcept;
    void own(bool own) noexcept;

    /// One line for each, as the calls that add them. Throws std::system_error EDEADLK in a callback
    /// of a logger.
    std::vector<std::string> describe() const;

private:
    struct Output {
        Kind kind;
        std::string name;
        AnyFunction callback;
        void* ctx;
        bool newline;
        std::uint16_t mask;
        std::uint16_t fields;
        std::unique_ptr<Sink> sink;

        bool is(const Request& request) const noexcept;
    };

    std::vector<Output>::iterator find(const Request& request);
    void update_taken();
    std::string_view compose(const Output& output, const clogger_msg_info& info);

    mutable std::mutex mutex_;
    bool forking_ = false;
    std::vector<Output> outputs_;  // filters included, they have no sink
    clogger_snprintf_time time_function_ = nullptr;
    std::string line_;
    std::atomic<unsigned> taken_{0};
};

/// Objects by name, made on demand and never destroyed. Nothing needs a lock, so that a forked child
/// finds none locked.
template <typename T>
class NameTable {
public:
    T* find(std::string_view name) const noexcept {
        for (T* item = bucket(name).load(std::memory_order_acquire); item != nullptr;
             item = item->next) {
            if (item->name == name) {
                return item;
            }
        }
        return nullptr;
    }

    /// Null without memory, or when the name is empty.
    T* find_or_make(std::string_view name) noexcept {
        if (T* const found = find(name); found != nullptr || name.empty()) {
            return found;
        }
        try {
            auto made = std::make_unique<T>(name);
            made->next = bucket(name);
            while (!bucket(name).compare_exchange_weak(made->next, made.get(),
                                                       std::memory_order_acq_rel)) {
                if (T* const found = find(name)) {  // another thread was faster
                    return found;
                }
            }
            return made.release();
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
    }

    template <typename Visitor>
    void for_each(Visitor visitor) const {
        for (const auto& head : buckets_) {
            for (T* item = head; item != nullptr; item = item->next) {
                visitor(*item);
            }
        }
    }

private:
    std::atomic<T*>& bucket(std::string_view name) const noexcept {
        return buckets_[std::hash<std::string_view>{}(name) % buckets_.size()];
    }

    mutable std::array<std::atomic<T*>, 64> buckets_{};
};

struct Registry {
    NameTable<clogger> loggers;
    NameTable<clogmod> modules;
    std::atomic<clogger*> default_logger{nullptr};

    Registry();

    /// The one of the process. It has the logger "default" with its output.
    static Registry& get();

    void set_up_default_logger();
};

/// Whether the level of the module (of the main module, for a record written straight to the
/// logger) and the mask of an output let a record pass.
bool passes(const clogger& logger, const clogmod* module, int level) noexcept;

/// The text of a printf call; `buffer` holds it where it has to be put together.
const char* format_text(std::string& buffer, const char* fmt, std::va_list args);

/// -- What an implementation adds --

/// A configuration call; all of them come through these two. `logger` may be null.
int add(clogger* logger, const Request& request) noexcept;
int remove(clogger* logger, const Request& request) noexcept;

/// A record; all of them come through here. `module` is null for one written straight to the
/// logger. The info lacks time and text.
void write(clogger& logger, const clogmod* module, clogger_msg_info& info, const char* fmt,
           std::va_list args) noexcept;

/// Opens an output that is neither a callback nor a filter. Throws std::system_error.
std::unique_ptr<Sink> open_sink(const Request& request);

}  // namespace nuv::platform::clog

struct clogmod {
    explicit clogmod(std::string_view module_name) : name(module_name) {}

    const std::string name;
    clogmod* next = nullptr;
    std::atomic<int> level{CLOGGER_INFO};
    std::atomic<clogger*> bound{nullptr};

    clogger* logger() const noexcept;
};

struct clogger {
    explicit clogger(std::string_view logger_name) : name(logger_name) {}

    const std::string name;
    clogger* next = nullptr;
    std::atomic<clogmod*> main_module{nullptr};
    nuv::platform::clog::Outputs outputs;
};

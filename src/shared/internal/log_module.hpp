// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <charconv>
#include <concepts>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>

#include "internal/classic_stream.hpp"
#include "internal/optional_platform.hpp"
#include "nuv_platform/clog.h"

namespace nuv::impl {

/// How the library's own code logs: one object per module name, at namespace scope of the .cpp,
///
///     constinit impl::LogModule log_module{"mainloop", "src/shared/mainloop"};
///     NUV_LOG(log_module, warn) << "text " << value;
class LogModule {
public:
    enum Level { error, warn, info, debug, trace };

    /// `file` is what records name as their source file; collectors match it, so it is given in
    /// full. Without it, it is the path of the source from the repository's root, without extension.
    explicit constexpr LogModule(const char* name, const char* file = nullptr) noexcept
        : name_(name), file_(file) {}

    /// Whether the module's level lets a record pass; false while the platform has no such module.
    bool enabled(Level level) noexcept {
        clogmod* module = get();
        if (module == nullptr) {
            module = clogmod_get_or_alloc(name_);
            module_.store(module, std::memory_order_release);
        }
        return level <= impl::loglevel(module);
    }

    /// Null until enabled() was asked.
    clogmod* get() const noexcept { return module_.load(std::memory_order_acquire); }
    const char* file() const noexcept { return file_; }

private:
    const char* name_;
    const char* file_;
    std::atomic<clogmod*> module_{nullptr};  // handles stay valid for good
};

/// The text of one record, logged when this object dies at the end of its statement. Takes what a
/// stream takes. A stream costs more to build than the record to log, so there is one only from the
/// first operand on that is neither text nor integer. Nothing throws: a record that finds no memory
/// is dropped whole.
class LogLine {
public:
    LogLine(const LogModule& module, LogModule::Level level, const char* file, const char* function,
            int line) noexcept;
    ~LogLine();
    LogLine(const LogLine&) = delete;
    LogLine& operator=(const LogLine&) = delete;

    template <typename T>
    LogLine& operator<<(const T& value) noexcept {
        if (!stream_) {
            if constexpr (std::convertible_to<const T&, std::string_view>) {
                append(value);
                return *this;
            } else if constexpr (std::same_as<T, char>) {
                append({&value, 1});
                return *this;
            } else if constexpr (std::same_as<T, bool> ||
                                 (std::integral<T> && std::numeric_limits<T>::digits > 8)) {
                std::array<char, 24> digits{};
                const auto end = std::to_chars(digits.begin(), digits.end(), +value).ptr;
                append({digits.begin(), end});
                return *this;
            }
        }
        try {
            stream() << value;
        } catch (...) {
            lost_ = true;
        }
        return *this;
    }

    LogLine& operator<<(std::ios_base& (*manipulator)(std::ios_base&)) noexcept;

private:
    void append(std::string_view text) noexcept;
    std::ostream& stream();

    const LogModule& module_;
    LogModule::Level level_;
    const char* file_;
    const char* function_;
    int line_;
    std::string text_;
    std::optional<ClassicStream> stream_;
    bool lost_ = false;
};

/// What a record names as its file: the source path without its extension.
template <std::size_t N>
struct SourcePath {
    char text[N]{};

    consteval SourcePath(const char (&path)[N]) {  // NOLINT(google-explicit-constructor)
        std::copy_n(path, std::string_view(path).rfind('.'), text);
    }
};
template <SourcePath Path>
constexpr const char* source_path() {
    return Path.text;
}

/// The line of one record, or nothing at all, the operands of `<<` included, when the module's
/// level masks it. `level` is an enumerator of LogModule::Level.
#define NUV_LOG(module, level)                                        \
    if (!(module).enabled(::nuv::impl::LogModule::level)) {           \
    } else                                                            \
        ::nuv::impl::LogLine((module), ::nuv::impl::LogModule::level, \
                             ::nuv::impl::source_path<__FILE__>(), __func__, __LINE__)

}  // namespace nuv::impl

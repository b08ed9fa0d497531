// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <atomic>
#include <string_view>

#include "nuv/logging/clog_stream_buf.hpp"
#include "nuv_platform/clog.h"

namespace nuv::logging {

/// The stream of one record of a module, by level number; a level outside 0 to 4 gives a stream
/// without adapter.
ClogStreamBuf make_module_stream(std::string_view module, int level, std::string_view file,
                                 std::string_view function, int line);

/// How the library's own code logs: one object per module name, at namespace scope of the .cpp,
///
///     constinit LogModule log_module{"mainloop"};
///     NUV_LOG(log_module, warn) << "text " << value;
class LogModule {
public:
    enum Level { error, warn, info, debug, trace };

    explicit constexpr LogModule(const char* name) noexcept : name_(name) {}

    /// Whether the module's level lets a record pass; false while the platform has no such module.
    bool enabled(Level level) noexcept {
        clogmod* module = module_.load(std::memory_order_acquire);
        if (module == nullptr) {
            module = clogmod_get_or_alloc(name_);
            module_.store(module, std::memory_order_release);
        }
        return level <= clogmod_get_loglevel(module);
    }

    ClogStreamBuf stream(Level level, std::string_view file, const char* function, int line) const {
        return make_module_stream(name_, level, file, function, line);
    }

private:
    const char* name_;
    std::atomic<clogmod*> module_{nullptr};  // handles stay valid for good
};

/// What a record names as its file: the source path without its extension.
consteval std::string_view without_extension(std::string_view path) {
    return path.substr(0, path.rfind('.'));
}

/// The stream of one record, or nothing at all, the operands of `<<` included, when the module's
/// level masks it. `level` is an enumerator of LogModule::Level.
#define NUV_LOG(module, level)                                 \
    if (!(module).enabled(::nuv::logging::LogModule::level)) { \
    } else                                                     \
        (module).stream(::nuv::logging::LogModule::level,      \
                        ::nuv::logging::without_extension(__FILE__), __func__, __LINE__)

}  // namespace nuv::logging

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "nuv/logging/chunk_io_manipulator.hpp"
#include "nuv/logging/clog_adapter_base.hpp"
#include "nuv_platform/clog.h"

namespace nuv::logging {

/// The adapter of one platform log function: `Handle` is clogger or clogmod, `Log` the function,
/// `Extra` what it takes between the line and the format. Nine functions, nine classes:
/// clogger__err, __warn, __info, __debug (with the debug argument as `Extra`) and clogmod__err,
/// __warn, __info, __debug, __trace. The handle is looked up by name for each text, an empty logger
/// name being the default logger.
template <typename Handle, auto Log, typename... Extra>
class ClogAdapter final : public ClogAdapterBase {
public:
    ClogAdapter(std::string name, std::string_view file, std::string_view function,
                std::int32_t line, Extra... extra)
        : ClogAdapterBase(std::move(name), file, function, line), extra_(extra...) {}

    /// The same from what a log statement has: `file` and `function` may be null. Null without
    /// memory.
    static std::unique_ptr<ClogAdapterBase> make(const std::string& name, const char* file,
                                                 const char* function, std::int32_t line,
                                                 Extra... extra) noexcept {
        try {
            return std::make_unique<ClogAdapter>(name, file != nullptr ? file : "",
                                                 function != nullptr ? function : "", line,
                                                 extra...);
        } catch (const std::bad_alloc&) {
            return nullptr;
        }
    }

    void log(const char* text) noexcept override {
        if (Handle* const handle = get_handle()) {
            std::apply(
                [&](auto... extra) {
                    Log(handle, file_.c_str(), function_.c_str(), line_, extra..., "%s", text);
                },
                extra_);
        }
    }

    std::uint32_t get_chunking() const noexcept override {
        return get_clogger_chunking(get_handle());
    }

private:
    Handle* get_handle() const noexcept {
        if constexpr (std::is_same_v<Handle, clogger>) {
            return clogger_get(name_.empty() ? nullptr : name_.c_str());
        } else {
            return clogmod_get_or_alloc(name_.c_str());
        }
    }

    [[no_unique_address]] std::tuple<Extra...> extra_;
};

}  // namespace nuv::logging

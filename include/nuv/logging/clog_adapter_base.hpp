// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "nuv/export.hpp"

namespace nuv::logging {

/// Where the text of a log stream goes: one logger or module at one level, and the place in the
/// source that the record names.
class NUV_EXPORT ClogAdapterBase {
public:
    virtual ~ClogAdapterBase() = default;
    ClogAdapterBase(const ClogAdapterBase&) = delete;
    ClogAdapterBase& operator=(const ClogAdapterBase&) = delete;

    /// Hands one NUL-terminated text to the platform logger. Without such a logger or module the
    /// text is dropped.
    virtual void log(const char* text) noexcept = 0;

    /// The destination's default chunk size in bytes, 0 for none.
    virtual std::uint32_t get_chunking() const noexcept = 0;

protected:
    ClogAdapterBase(std::string name, std::string_view file, std::string_view function,
                    std::int32_t line)
        : name_(std::move(name)), file_(file), function_(function), line_(line) {}

    std::string name_;
    std::string file_;
    std::string function_;
    std::int32_t line_;
};

}  // namespace nuv::logging

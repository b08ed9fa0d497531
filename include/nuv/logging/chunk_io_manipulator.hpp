// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>

#include "nuv/export.hpp"
#include "nuv_platform/clog.h"

namespace nuv::logging {

/// Written into a log stream, sets the size in bytes above which this stream's text is cut into
/// several records. It takes precedence over the logger's default; 0 means the default.
class NUV_EXPORT ChunkIOManipulator {
public:
    constexpr explicit ChunkIOManipulator(std::uint32_t size) noexcept : size_(size) {}

    constexpr std::uint32_t get_size() const noexcept { return size_; }

    /// Index of the stream word that keeps the size, reserved once per process.
    static int xalloc_value();

private:
    std::uint32_t size_;
};

NUV_EXPORT std::ostream& operator<<(std::ostream& os, ChunkIOManipulator chunk);

/// The process-wide table of default chunk sizes by logger name, for any thread. A name that was
/// never set has size 0: records are not cut.
NUV_EXPORT std::uint32_t get_default_clogger_chunking(const std::string& logger_name);
NUV_EXPORT void set_default_clogger_chunking(const std::string& logger_name, std::uint32_t size);

/// The default chunk size of a logger, by the name that the platform reports for it; 0 for null.
NUV_EXPORT std::uint32_t get_clogger_chunking(const clogger* logger);
/// The same for the logger that a module writes to.
NUV_EXPORT std::uint32_t get_clogger_chunking(clogmod* module);

}  // namespace nuv::logging

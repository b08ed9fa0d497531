// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "nuv/export.hpp"
#include "nuv/logging/clog_stream_buf.hpp"
#include "nuv_platform/clog.h"

namespace nuv::logging {

/// A named module of the platform logger.
class NUV_EXPORT ClogmodProxy {
public:
    explicit ClogmodProxy(const std::string& name) : name_(name) {}

    /// Null when the platform has no such module and cannot make it.
    clogmod* get_clogmod() const;

    /// Levels: 0 error, 1 warning, 2 info, 3 debug, 4 trace. Records above the module's level are
    /// dropped by the platform.
    void set_loglevel(int level);
    int get_loglevel() const;

    /// The stream of one record. `file` (the source path without its extension) and `function` may
    /// be null. A level outside 0 to 4 gives a stream that discards its text.
    ClogStreamBuf get_ostream(int level, const char* file, const char* function, int line) const;

private:
    std::string name_;
};

}  // namespace nuv::logging

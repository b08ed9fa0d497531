// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <future>

#include "nuv/export.hpp"

namespace nuv::async {

/// A future in the pool, with what takes its result.
class NUV_EXPORT FutureWrapperBase {
public:
    FutureWrapperBase() = default;
    FutureWrapperBase(const FutureWrapperBase&) = delete;
    FutureWrapperBase& operator=(const FutureWrapperBase&) = delete;
    virtual ~FutureWrapperBase();

    /// Without waiting.
    virtual std::future_status get_status() const = 0;
    /// Hands over the result of a future that is ready.
    virtual void handle() = 0;

    /// Whether the result is still wanted.
    bool connected() const noexcept { return connected_; }
    void disconnect() noexcept { connected_ = false; }

private:
    bool connected_ = true;
};

}  // namespace nuv::async

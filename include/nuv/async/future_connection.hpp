// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <utility>

#include "nuv/async/future_wrapper_base.hpp"
#include "nuv/export.hpp"

namespace nuv::async {

/// A handle to a future in the pool that does not own it.
class NUV_EXPORT FutureConnection {
public:
    FutureConnection() noexcept = default;  ///< to none
    explicit FutureConnection(std::weak_ptr<FutureWrapperBase> wrapper) noexcept
        : wrapper_(std::move(wrapper)) {}

    void swap(FutureConnection& other) noexcept { wrapper_.swap(other.wrapper_); }

    /// Whether the future is in the pool and its result still wanted.
    bool connected() const noexcept;
    /// The result is not wanted any more. Returns whether the future was still there.
    bool disconnect() noexcept;

private:
    std::weak_ptr<FutureWrapperBase> wrapper_;
};

inline void swap(FutureConnection& a, FutureConnection& b) noexcept { a.swap(b); }

/// Disconnects when it dies or is assigned to.
class NUV_EXPORT ScopedFutureConnection {
public:
    ScopedFutureConnection() noexcept = default;
    // NOLINTNEXTLINE(google-explicit-constructor)
    ScopedFutureConnection(FutureConnection connection) noexcept
        : connection_(std::move(connection)) {}
    ScopedFutureConnection(ScopedFutureConnection&& other) noexcept
        : connection_(std::exchange(other.connection_, {})) {}
    ScopedFutureConnection& operator=(ScopedFutureConnection&& other) noexcept;
    ScopedFutureConnection& operator=(FutureConnection connection) noexcept;
    ~ScopedFutureConnection() { connection_.disconnect(); }

    bool connected() const noexcept { return connection_.connected(); }
    bool disconnect() noexcept { return connection_.disconnect(); }

private:
    FutureConnection connection_;
};

}  // namespace nuv::async

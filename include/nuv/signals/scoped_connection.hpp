// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/export.hpp"
#include "nuv/signals/connection.hpp"

namespace nuv::signals {

/// A connection that disconnects its slot when it dies or is assigned to.
class NUV_EXPORT ScopedConnection : public Connection {
public:
    ScopedConnection() noexcept = default;
    // NOLINTNEXTLINE(google-explicit-constructor)
    ScopedConnection(const Connection& connection) : Connection(connection) {}
    ScopedConnection(ScopedConnection&& other) noexcept { swap(other); }
    ScopedConnection(const ScopedConnection&) = delete;
    ScopedConnection& operator=(const ScopedConnection&) = delete;
    ~ScopedConnection() override;

    /// Disconnects, then exchanges: `other` is left with the slot that was disconnected.
    ScopedConnection& operator=(ScopedConnection&& other) noexcept;
    /// Disconnects, then takes over.
    ScopedConnection& operator=(const Connection& other);
};

}  // namespace nuv::signals

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "nuv/export.hpp"
#include "nuv/signals/slot_base.hpp"

namespace nuv::signals {

/// A handle to a slot of a signal that owns neither. Once the slot is gone, questions are answered
/// with false and commands do nothing.
class NUV_EXPORT Connection {
public:
    Connection() noexcept = default;  ///< to no slot
    // NOLINTNEXTLINE(google-explicit-constructor)
    Connection(std::weak_ptr<SlotBase> slot) noexcept : slot_(std::move(slot)) {}
    Connection(const Connection&) = default;
    Connection(Connection&&) noexcept = default;
    Connection& operator=(const Connection&) = default;
    Connection& operator=(Connection&&) noexcept = default;
    virtual ~Connection();

    bool is_connected() const noexcept;
    void disconnect() noexcept;
    bool is_blocked() const noexcept;
    void block(bool blocked) noexcept;

    void swap(Connection& other) noexcept { slot_.swap(other.slot_); }

    /// Whether both are to the same slot, or to slots that are gone.
    bool operator==(const Connection& other) const noexcept {
        return slot_.lock() == other.slot_.lock();
    }
    /// By the slots' identity, which outlives them: a connection keeps its place in a set. So two to
    /// slots that are gone are equal and yet ordered.
    bool operator<(const Connection& other) const noexcept {
        return slot_.owner_before(other.slot_);
    }

private:
    std::weak_ptr<SlotBase> slot_;
};

inline void swap(Connection& a, Connection& b) noexcept { a.swap(b); }

}  // namespace nuv::signals

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/export.hpp"

namespace nuv::signals {

/// What a signal holds for each function connected to it, as connections see it.
class NUV_EXPORT SlotBase {
public:
    SlotBase() = default;
    SlotBase(const SlotBase&) = delete;
    SlotBase& operator=(const SlotBase&) = delete;
    virtual ~SlotBase();

    /// Whether the signal is gone.
    virtual bool is_expired() const noexcept = 0;
    /// Tells signals apart; null once the signal is gone.
    virtual const void* signal_id() const noexcept = 0;
    /// Whether emissions reach the slot, blocked or not.
    virtual bool is_connected() const noexcept = 0;
    /// Ends that for good.
    virtual void disconnect() noexcept = 0;
    virtual bool is_blocked() const noexcept = 0;
    /// Emissions pass over a blocked slot.
    virtual void block(bool blocked) noexcept = 0;
};

}  // namespace nuv::signals

// SPDX-License-Identifier: Apache-2.0
#include "nuv/signals/connection.hpp"

namespace nuv::signals {

SlotBase::~SlotBase() = default;

Connection::~Connection() = default;

bool Connection::is_connected() const noexcept {
    const auto slot = slot_.lock();
    return slot != nullptr && slot->is_connected();
}

void Connection::disconnect() noexcept {
    if (const auto slot = slot_.lock()) {
        slot->disconnect();
    }
}

bool Connection::is_blocked() const noexcept {
    const auto slot = slot_.lock();
    return slot != nullptr && slot->is_blocked();
}

void Connection::block(bool blocked) noexcept {
    if (const auto slot = slot_.lock()) {
        slot->block(blocked);
    }
}

}  // namespace nuv::signals

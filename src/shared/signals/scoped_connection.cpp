// SPDX-License-Identifier: Apache-2.0
#include "nuv/signals/scoped_connection.hpp"

namespace nuv::signals {

ScopedConnection::~ScopedConnection() { disconnect(); }

ScopedConnection& ScopedConnection::operator=(ScopedConnection&& other) noexcept {
    if (this != &other) {
        disconnect();
        swap(other);
    }
    return *this;
}

ScopedConnection& ScopedConnection::operator=(const Connection& other) {
    Connection copy(other);
    disconnect();
    swap(copy);
    return *this;
}

}  // namespace nuv::signals

// SPDX-License-Identifier: Apache-2.0
#include "nuv/async/future_connection.hpp"

namespace nuv::async {

FutureWrapperBase::~FutureWrapperBase() = default;

bool FutureConnection::connected() const noexcept {
    const auto wrapper = wrapper_.lock();
    return wrapper != nullptr && wrapper->connected();
}

bool FutureConnection::disconnect() noexcept {
    const auto wrapper = wrapper_.lock();
    if (wrapper != nullptr) {
        wrapper->disconnect();
    }
    return wrapper != nullptr;
}

ScopedFutureConnection& ScopedFutureConnection::operator=(ScopedFutureConnection&& other) noexcept {
    return *this = std::exchange(other.connection_, {});
}

ScopedFutureConnection& ScopedFutureConnection::operator=(FutureConnection connection) noexcept {
    connection_.disconnect();
    connection_.swap(connection);
    return *this;
}

}  // namespace nuv::async

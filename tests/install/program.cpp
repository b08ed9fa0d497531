// SPDX-License-Identifier: Apache-2.0
// Runs on the Linux platform: the loopback interface is there, and its address is all zeros.
#include <array>
#include <cstdint>

#include "nuv/serialization_exception.hpp"
#include "nuv_platform/ifwatch.h"

int main() {
    std::array<std::uint8_t, 6> address{1};
    try {
        if (if_get_hwaddr("lo", address.data()) < 0) {
            throw nuv::serialization::SerializationException("no loopback interface");
        }
    } catch (const nuv::serialization::SerializationException&) {
        return 1;
    }
    return address == std::array<std::uint8_t, 6>{} ? 0 : 1;
}

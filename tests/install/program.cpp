// SPDX-License-Identifier: Apache-2.0
// Runs on the Linux platform, where there is a loopback interface, and catches by its type an
// exception that is thrown inside the library.
#include <cstdint>
#include <sstream>

#include "nuv/binary_serializable_type.hpp"
#include "nuv/mac_address.hpp"
#include "nuv_platform/ifwatch.h"

namespace {

bool truncated_input_is_refused() {
    std::istringstream two_octets("ab");
    nuv::serialization::SerializationContext context;
    std::uint32_t value = 0;
    try {
        nuv::serialization::BinarySerializableType<std::uint32_t>::deserialize(two_octets, context,
                                                                               value);
    } catch (const nuv::serialization::SerializationException&) {
        return true;
    }
    return false;
}

}  // namespace

int main() {
    nuv::MACAddress::Octets octets{1};
    const bool has_loopback = if_get_hwaddr("lo", octets.data()) == 0;
    const bool all_zero = nuv::MACAddress(octets).to_string() == "00:00:00:00:00:00";
    return has_loopback && all_zero && truncated_input_is_refused() ? 0 : 1;
}

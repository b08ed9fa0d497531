// SPDX-License-Identifier: Apache-2.0
#include "frames/management_frame.hpp"

#include <algorithm>

namespace nuvctl {

nuv::MACAddress address_in(Octets octets) {
    nuv::MACAddress::Octets value{};
    std::copy_n(octets.begin(), value.size(), value.begin());
    return nuv::MACAddress(value);
}

std::optional<ManagementFrame> management_frame(const MacFrame& frame) {
    constexpr std::size_t mac_header = 24;
    constexpr std::uint8_t protected_frame = 0x40;
    constexpr std::uint8_t order = 0x80;
    constexpr std::uint8_t fragment_number = 0x0F;
    constexpr std::size_t ht_control = 4;
    const Octets octets = frame.octets;
    if (octets.size() < mac_header) {
        return std::nullopt;
    }
    // An encrypted body and a later fragment do not begin with what a body begins with.
    if ((octets[1] & protected_frame) != 0 || (octets[22] & fragment_number) != 0) {
        return std::nullopt;
    }
    const std::size_t body = mac_header + ((octets[1] & order) != 0 ? ht_control : 0);
    if (body > octets.size()) {
        return std::nullopt;
    }
    return ManagementFrame{static_cast<Subtype>(octets[0]), address_in(octets.subspan(4)),
                           address_in(octets.subspan(10)), address_in(octets.subspan(16)),
                           octets.subspan(body)};
}

}  // namespace nuvctl

// SPDX-License-Identifier: Apache-2.0
#include "nuv/ipv4_address.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>

#include "internal/quote.hpp"
#include "internal/text_scan.hpp"

namespace nuv {

namespace {

constexpr std::size_t MAX_TEXT = 15;

[[noreturn]] void refuse(std::string_view text, const std::string& reason) {
    throw std::invalid_argument("Could not parse IPv4 address " + impl::quote(text) + ": " +
                                reason);
}

}  // namespace

constinit const IPv4Address IPv4Address::UNSPECIFIED{};

IPv4Address::IPv4Address(std::span<const std::uint8_t> octets)
    : IPAddressOctets(octets, "Expected exactly four bytes for IPv4 address") {}

IPv4Address::IPv4Address(std::span<const std::byte> bytes)
    : IPv4Address(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size())) {}

IPv4Address::IPv4Address(TextArgument text) { IPv4Address::from_string(text); }

std::uint32_t IPv4Address::to_uint() const noexcept {
    return std::uint32_t{octets_[0]} << 24U | std::uint32_t{octets_[1]} << 16U |
           std::uint32_t{octets_[2]} << 8U | octets_[3];
}

bool IPv4Address::is_benchmarking() const noexcept {
    return octets_[0] == 198 && (octets_[1] == 18 || octets_[1] == 19);
}
bool IPv4Address::is_documentation() const noexcept {
    return starts_with({192, 0, 2}) || starts_with({198, 51, 100}) || starts_with({203, 0, 113});
}
bool IPv4Address::is_loopback() const noexcept { return octets_[0] == 127; }
bool IPv4Address::is_link_local() const noexcept { return starts_with({169, 254}); }
bool IPv4Address::is_unicast() const noexcept { return !is_multicast() && !is_broadcast(); }
bool IPv4Address::is_multicast() const noexcept { return octets_[0] >= 224 && octets_[0] <= 239; }
bool IPv4Address::is_private() const noexcept {
    return octets_[0] == 10 || (octets_[0] == 172 && octets_[1] >= 16 && octets_[1] <= 31) ||
           starts_with({192, 168});
}
bool IPv4Address::is_broadcast() const noexcept { return to_uint() == 0xFFFFFFFF; }

std::string IPv4Address::to_string() const {
    std::string text;
    for (const std::uint8_t octet : octets_) {
        if (!text.empty()) {
            text += '.';
        }
        std::array<char, 3> digits{};
        text.append(digits.data(), std::to_chars(digits.begin(), digits.end(), octet).ptr);
    }
    return text;
}

// A scan on purpose, as lenient as it is: other writers of these texts rely on it.
void IPv4Address::from_string(TextArgument text) {
    if (text.size() > MAX_TEXT) {
        refuse(text, "String is too long");
    }
    std::array<std::uint32_t, 4> numbers{};
    impl::TextScan scan(text);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if ((i > 0 && !scan.literal('.')) || !scan.number<10>(numbers[i], 3)) {
            refuse(text, "String contains invalid octets");
        }
    }
    if (!scan.at_end()) {
        refuse(text, "String contains invalid octets");
    }
    decltype(octets_) fresh{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (numbers[i] > 255) {
            refuse(text, "Value " + std::to_string(numbers[i]) + " at position " +
                             std::to_string(i) + " is invalid");
        }
        fresh[i] = static_cast<std::uint8_t>(numbers[i]);
    }
    octets_ = fresh;
}

}  // namespace nuv

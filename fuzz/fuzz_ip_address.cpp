// SPDX-License-Identifier: Apache-2.0
// The input is a text that may be an IP address or a prefixed one.
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/invariant.hpp"
#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "nuv/prefixed_ip_address.hpp"

namespace {

using nuv::IPAddress;
using nuv::IPv4Address;
using nuv::IPv6Address;
using nuv::PrefixedIPAddress;
using nuv::fuzz::require;

using Octets = std::vector<std::uint8_t>;

/// The rules once more, by scanf and as plainly as they can be said. Nothing for a refused text.
std::optional<Octets> scan_v4(const std::string& text) {
    std::array<unsigned, 4> n{};
    char behind[2];
    if (text.size() > 15 ||
        std::sscanf(text.c_str(), "%3u.%3u.%3u.%3u%1s", &n[0], &n[1], &n[2], &n[3], behind) != 4) {
        return std::nullopt;
    }
    Octets octets;
    for (const unsigned number : n) {
        if (number > 255) {
            return std::nullopt;
        }
        octets.push_back(static_cast<std::uint8_t>(number));
    }
    return octets;
}

std::optional<Octets> scan_v6(const std::string& text) {
    if (text.size() > 39) {
        return std::nullopt;
    }
    if (text == "::") {
        return Octets(16);
    }
    std::vector<std::string> segments(1);
    for (const char c : text) {
        c == ':' ? segments.emplace_back() : segments.back() += c;
    }
    if (segments.size() < 3 || segments.size() > 8) {
        return std::nullopt;
    }
    if (segments.front().empty()) {
        if (!segments[1].empty()) {
            return std::nullopt;
        }
        segments.erase(segments.begin());
    } else if (segments.back().empty()) {
        segments.pop_back();
        if (!segments.back().empty()) {
            return std::nullopt;
        }
    }
    Octets before, behind;  // the run of zeros
    bool run = false;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        Octets& octets = run ? behind : before;
        if (segments[i].empty()) {
            if (run) {
                return std::nullopt;
            }
            run = true;
            continue;
        }
        unsigned value = 0;
        char rest[2];
        const auto v4 = i + 1 == segments.size() ? scan_v4(segments[i]) : std::nullopt;
        if (v4) {
            octets.insert(octets.end(), v4->begin(), v4->end());
        } else if (std::sscanf(segments[i].c_str(), "%4x%1s", &value, rest) == 1) {
            octets.push_back(static_cast<std::uint8_t>(value >> 8U));
            octets.push_back(static_cast<std::uint8_t>(value));
        } else {
            return std::nullopt;
        }
    }
    const std::size_t size = before.size() + behind.size();
    if (run ? size > 14 : size != 16) {
        return std::nullopt;
    }
    before.resize(16 - behind.size());
    before.insert(before.end(), behind.begin(), behind.end());
    return before;
}

template <class Address>
void check(const std::string& text, const std::optional<Octets>& expected) {
    Address address;
    address.as_bytes_span_raw().front() = 0xE0;
    const Address before = address;
    try {
        address.from_string(text);
        require(expected && address.to_bytes_raw() == *expected, "read against the rule");
        require(Address(address.to_string()) == address, "not read back");
        require(Address(address.to_string()).to_string() == address.to_string(), "two texts");
        require(*IPAddress::guess_version_and_parse(address.to_string()) == address, "guessed");
    } catch (const std::invalid_argument& error) {
        require(!expected, error.what());
        require(address == before, "changed by a refused text");
    }
}

void check_prefixed(const std::string& text) {
    try {
        const auto prefixed = PrefixedIPAddress::guess_version_and_parse(text);
        const std::size_t slash = text.find('/');
        unsigned char scanned = 0;
        if (text.size() - slash <= 9 &&  // what fits a number on every machine
            std::sscanf(text.c_str() + slash + 1, "%hhu", &scanned) == 1) {
            require(prefixed.get_prefix_length() == scanned, "prefix length");
        }
        require(PrefixedIPAddress::guess_version_and_parse(prefixed.to_string()) == prefixed,
                "prefix not read back");
        require(prefixed.contains(prefixed.get_address()), "does not contain its address");
        require(prefixed.get_network_address().is_network_address(), "network of a network");
    } catch (const std::invalid_argument& error) {
        const std::size_t slash = std::min(text.find('/'), text.size());
        const std::string address = text.substr(0, slash);
        unsigned char prefix_length = 0;
        require(std::sscanf(text.c_str() + slash, "/%hhu", &prefix_length) != 1 ||
                    text.size() - slash > 9 || address.find('\0') != std::string::npos ||
                    prefix_length > (scan_v4(address)   ? 32
                                     : scan_v6(address) ? 128
                                                        : -1) ||
                    std::strncmp(error.what(), "Could not guess", 15) == 0,
                "refused against the rule");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    check<IPv4Address>(text, scan_v4(text));
    check<IPv6Address>(text, scan_v6(text));
    check_prefixed(text);
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
// The input is a text that may be a MAC address.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <stdexcept>
#include <string>

#include "fuzz/invariant.hpp"
#include "nuv/mac_address.hpp"

namespace {

using nuv::MACAddress;
using nuv::fuzz::require;

constexpr MACAddress::Octets before{0xE0, 0xE1, 0xE2, 0xE3, 0xE4, 0xE5};

/// The rule, said by a scan: 17 characters of a few, and six numbers that use them up. Octets that
/// were scanned before a failure stay.
bool scan(const std::string& text, MACAddress::Octets& o) {
    int consumed = 0;
    return text.size() == 17 &&
           text.find_first_not_of("0123456789ABCDEFabcdef:") == std::string::npos &&
           std::sscanf(text.c_str(), "%2hhx:%2hhx:%2hhx:%2hhx:%2hhx:%2hhx%n", &o[0], &o[1], &o[2],
                       &o[3], &o[4], &o[5], &consumed) == 6 &&
           consumed == 17;
}

void check_parse(const std::string& text) {
    MACAddress::Octets scanned = before;
    const bool expected = scan(text, scanned);
    MACAddress address(before);
    require(address.parse_string(text) == expected, "taken or refused against the rule");
    require(address.octets() == scanned, "other octets");
    try {
        const MACAddress constructed(text);
        require(expected && constructed == address, "constructed against the rule");
        std::string upper = text;
        std::ranges::transform(upper, upper.begin(),
                               [](unsigned char c) { return std::toupper(c); });
        require(constructed.to_string() == upper, "not the text it was made of");
    } catch (const std::invalid_argument& e) {
        // Compared as far as what() reaches: the text may hold a NUL.
        const std::string message = "'" + text + "' is no valid MACAddress string";
        require(!expected && std::strcmp(e.what(), message.c_str()) == 0, e.what());
    }
}

void check_extraction(const std::string& text) {
    std::istringstream is(text);
    is.width(5);
    MACAddress address(before);
    is >> address;

    std::istringstream words(text);
    words.width(17);
    std::string word;
    words >> word;
    MACAddress::Octets scanned = before;
    const bool expected = scan(word, scanned);
    require(address.octets() == (expected ? scanned : before), "extracted against the rule");
    require(is.rdstate() == (expected ? std::ios_base::goodbit : std::ios_base::failbit), "state");
    require(is.width() == 5, "width changed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    check_parse(text);
    check_extraction(text);
    return 0;
}

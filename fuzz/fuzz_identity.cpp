// SPDX-License-Identifier: Apache-2.0
// The input is a text that may be a version, a MAC address, a message bus address or a device
// identifier, or the octets of a device identifier.
#include <regex>

#include "fuzz/invariant.hpp"
#include "nuv/addresses.hpp"

namespace {

using nuv::MACAddress;
using nuv::fuzz::require;

/// Whether `text` is one of a T; what is read prints as something that is read as the same.
template <class T>
bool check_text(const std::string& text, const T& sample) {
    T value = sample;
    const bool read = value.parse_string(text);
    require(read || value == sample || std::is_same_v<T, MACAddress>, "changed by a refused text");
    try {
        const T made(text);
        require(read && made == value, "constructor and parse_string");
        require(T(made.to_string()) == made, "not read back");
        require(T(made.to_string()).to_string() == made.to_string(), "two texts of one value");
    } catch (const std::invalid_argument&) {
        require(!read, "constructor and parse_string");
    }
    return read;
}

const std::regex version_rule("0*[0-9]{1,5}(\\.0*[0-9]{1,5}){0,3}");
const std::regex address_rule("[A-Za-z0-9_.-]{1,64}(@([0-9A-Fa-f]{2}:){5}[0-9A-Fa-f]{2})?");

constexpr MACAddress::Octets before{0xE0, 0xE1, 0xE2, 0xE3, 0xE4, 0xE5};

/// The rule of MAC addresses, said by a scan: 17 characters of a few, and six numbers that use them
/// up. Octets that were scanned before a failure stay.
bool scan(const std::string& text, MACAddress::Octets& o) {
    int consumed = 0;
    return text.size() == 17 &&
           text.find_first_not_of("0123456789ABCDEFabcdef:") == std::string::npos &&
           std::sscanf(text.c_str(), "%2hhx:%2hhx:%2hhx:%2hhx:%2hhx:%2hhx%n", &o[0], &o[1], &o[2],
                       &o[3], &o[4], &o[5], &consumed) == 6 &&
           consumed == 17;
}

void check_mac_address(const std::string& text) {
    MACAddress::Octets scanned = before;
    MACAddress address(before);
    const bool expected = scan(text, scanned);
    require(check_text(text, address) == expected, "taken or refused against the rule");
    address.parse_string(text);
    require(address.octets() == scanned, "other octets");

    std::istringstream is(text.substr(0, MACAddress::MAC_ADDR_STRING_LEN));
    MACAddress extracted(before);
    is >> extracted;
    require(!expected || extracted == address, "extracted otherwise than parsed");
    require(is.good() || extracted.octets() == before, "changed by a refused text");
}

void check_device_id(const std::string& text) {
    const nuv::DeviceID sample("local=a local=b");
    check_text(text, sample);
    nuv::DeviceID read = sample;
    nuv::serialization::SerializationContext ctx;
    std::istringstream is(text);
    try {
        read.deserialize_impl(is, ctx);
    } catch (const nuv::serialization::SerializationException&) {
        require(read == sample, "half read");
        return;
    }
    std::ostringstream os;
    read.serialize_impl(os, ctx);
    require(text.starts_with(os.str()), "written in other octets than read");
    require(is.tellg() == os.tellp(), "read further");
    require(nuv::DeviceID(read.to_string()) == read, "text not read back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    require(!check_text(text, nuv::BasicVersion{1, 2}) || std::regex_match(text, version_rule),
            "version against the rule");
    require(check_text(text, nuv::TarvuAddress("a")) == std::regex_match(text, address_rule),
            "message bus address against the rule");
    check_mac_address(text);
    check_device_id(text);
    return 0;
}

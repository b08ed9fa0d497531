// SPDX-License-Identifier: Apache-2.0
// The input is a text that may be an IP address or a prefixed one.
#include "fuzz/invariant.hpp"
#include "nuv/prefixed_ip_address.hpp"
#include "tests/support/ip_texts.hpp"

namespace {

using nuv::IPAddress;
using nuv::PrefixedIPAddress;
using nuv::fuzz::require;

std::unique_ptr<IPAddress> guessed(const std::string& text) {
    try {
        return IPAddress::guess_version_and_parse(text);
    } catch (const std::invalid_argument&) {
        return nullptr;
    }
}

void check_prefixed(const std::string& text) {
    const std::size_t slash = std::min(text.find('/'), text.size());
    const auto address = guessed(text.substr(0, slash));
    unsigned char length = 0;
    const bool scanned = text.size() - slash <= 9 &&  // what fits a number on every machine
                         std::sscanf(text.c_str() + slash, "/%hhu", &length) == 1;
    try {
        const auto prefixed = PrefixedIPAddress::guess_version_and_parse(text);
        require(!scanned || prefixed.get_prefix_length() == length, "prefix length");
        require(PrefixedIPAddress::guess_version_and_parse(prefixed.to_string()) == prefixed,
                "prefix not read back");
        require(prefixed.contains(prefixed.get_address()), "does not contain its address");
        require(prefixed.get_network_address().is_network_address(), "network of a network");
    } catch (const std::invalid_argument&) {
        require(!scanned || address == nullptr || length > 8 * address->num_octets(),
                "refused against the rule");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    nuv::fuzz::require_well(nuv::test::check_ip_text(text));
    check_prefixed(text);
    return 0;
}

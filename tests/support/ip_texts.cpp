// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ip_texts.hpp"

#include <arpa/inet.h>

#include <algorithm>
#include <array>

#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/hex.hpp"

namespace nuv::test {

namespace {

int family_of(const IPAddress& address) { return address.is_v4() ? AF_INET : AF_INET6; }

/// Blanks and signs before a number, 0x before a segment, zeros before a decimal number.
bool may_be_read_here_alone(const std::string& text) {
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    bool leading_zero = false;
    for (std::size_t i = text.rfind(':') + 1; i + 1 < text.size(); ++i) {
        leading_zero |= text[i] == '0' && digit(text[i + 1]) && (i == 0 || !digit(text[i - 1]));
    }
    return text.find_first_of(" \t\n\v\f\r+-xX") != std::string::npos ||
           (leading_zero && text.find('.') != std::string::npos);
}

/// Nine segments, with :: for one at an end; more than 39 characters.
bool may_be_refused_here_alone(const std::string& text) {
    return std::ranges::count(text, ':') == 8 || text.size() > 39;
}

template <class Address>
std::string check_text(const std::string& text) {
    Address address;
    address.as_bytes_span_raw().front() = 0xE0;
    const Address before = address;
    Octets theirs(address.num_octets());
    const bool read_there = inet_pton(family_of(address), text.c_str(), theirs.data()) == 1;
    const bool cut_there = text.find('\0') != std::string::npos;
    const std::string refusal =
        message_of<std::invalid_argument>([&] { address.from_string(text); });
    if (!refusal.empty()) {
        return !(address == before) ? "changed by a refused text"
               : read_there && !cut_there && !may_be_refused_here_alone(text) ? refusal
                                                                              : "";
    }
    if (!cut_there &&
        (read_there ? address.to_bytes_raw() != theirs : !may_be_read_here_alone(text))) {
        return "read as " + address.to_string();
    }
    return check_printed(address);
}

}  // namespace

std::string check_ip_text(const std::string& text) {
    return check_text<IPv4Address>(text) + check_text<IPv6Address>(text);
}

std::string check_printed(const IPAddress& address) {
    std::array<char, INET6_ADDRSTRLEN> buffer{};
    const std::string theirs = inet_ntop(family_of(address), address.as_bytes_span_raw().data(),
                                         buffer.data(), buffer.size());
    const std::string text = address.to_string();
    const auto* v6 = dynamic_cast<const IPv6Address*>(&address);
    const auto dot = theirs.find('.');
    if (v6 != nullptr && v6->is_compatible_v4() && dot != std::string::npos
            ? text.find('.') != std::string::npos
            : text != theirs) {
        return text + " stands for " + theirs;
    }
    return *IPAddress::guess_version_and_parse(text) == address ? "" : text + " is not read back";
}

}  // namespace nuv::test

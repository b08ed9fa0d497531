// SPDX-License-Identifier: Apache-2.0
#include "nuv/ipv6_address.hpp"

#include <algorithm>
#include <charconv>
#include <optional>
#include <stdexcept>

#include "internal/quote.hpp"
#include "internal/text_scan.hpp"
#include "nuv/ipv4_address.hpp"

namespace nuv {

namespace {

// Eight segments of four digits. A longer text with a dotted end is refused: readers share this
// bound.
constexpr std::size_t MAX_TEXT = 39;
constexpr std::size_t MIN_SEGMENTS = 3;
constexpr std::size_t IPV4_SEGMENTS = 2;  // whose place a dotted end takes

[[noreturn]] void refuse(std::string_view text, const std::string& reason) {
    throw std::invalid_argument("Could not parse IPv6 address " + impl::quote(text) + ": " +
                                reason);
}

/// `segment` as an IPv4 address, if it is one.
std::optional<IPv4Address> dotted_end(std::string_view segment) {
    if (segment.find('.') == std::string_view::npos) {
        return std::nullopt;
    }
    try {
        return IPv4Address(segment);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

std::uint8_t* put(std::uint16_t segment, std::uint8_t* at) {
    *at++ = static_cast<std::uint8_t>(segment >> 8U);
    *at++ = static_cast<std::uint8_t>(segment);
    return at;
}

/// A run of zero segments.
struct Run {
    std::size_t begin = IPv6Address::NUM_SEGMENTS;
    std::size_t length = 0;
};

/// The longest one, the first of equals.
Run longest_zero_run(const IPv6Address::Segments& segments) {
    Run longest;
    Run run;
    for (std::size_t i = 0; i < segments.size(); ++i) {
        run = segments[i] != 0 ? Run{}
              : run.length > 0 ? Run{run.begin, run.length + 1}
                               : Run{i, 1};
        if (run.length > longest.length) {
            longest = run;
        }
    }
    return longest;
}

}  // namespace

constinit const IPv6Address IPv6Address::UNSPECIFIED{};

IPv6Address::IPv6Address(const Segments& segments) noexcept {
    std::uint8_t* at = octets_.data();
    for (const std::uint16_t segment : segments) {
        at = put(segment, at);
    }
}

IPv6Address::IPv6Address(std::span<const std::uint8_t> octets)
    : IPAddressOctets(octets, "Expected exactly sixteen bytes for IPv6 address") {}

IPv6Address::IPv6Address(std::span<const std::byte> bytes)
    : IPv6Address(std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size())) {}

IPv6Address::IPv6Address(TextArgument text) { IPv6Address::from_string(text); }

IPv6Address::Segments IPv6Address::to_segments() const noexcept {
    Segments segments{};
    for (std::size_t i = 0; i < segments.size(); ++i) {
        segments[i] = static_cast<std::uint16_t>(octets_[2 * i] << 8U | octets_[2 * i + 1]);
    }
    return segments;
}

bool IPv6Address::is_benchmarking() const noexcept {
    return starts_with({0x20, 0x01, 0x00, 0x02, 0x00, 0x00});
}
bool IPv6Address::is_documentation() const noexcept {
    return starts_with({0x20, 0x01, 0x0D, 0xB8});
}
bool IPv6Address::is_loopback() const noexcept {
    return is_compatible_v4() && to_segments()[6] == 0 && to_segments()[7] == 1;
}
bool IPv6Address::is_link_local() const noexcept {
    return octets_[0] == 0xFE && (octets_[1] & 0xC0U) == 0x80;
}
bool IPv6Address::is_unicast() const noexcept { return !is_multicast(); }
bool IPv6Address::is_multicast() const noexcept { return octets_[0] == 0xFF; }
bool IPv6Address::is_unique_local() const noexcept { return (octets_[0] & 0xFEU) == 0xFC; }
bool IPv6Address::is_mapped_v4() const noexcept {
    return starts_with({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF});
}
bool IPv6Address::is_compatible_v4() const noexcept {
    return starts_with({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
}

std::string IPv6Address::to_string() const {
    if (is_mapped_v4()) {
        return "::ffff:" + IPv4Address(std::span(octets_).last<4>()).to_string();
    }
    const Segments segments = to_segments();
    Run compressed = longest_zero_run(segments);
    if (compressed.length < 2) {
        compressed = {};
    }
    std::array<char, MAX_TEXT> text{};
    char* at = text.data();
    for (std::size_t i = 0; i < segments.size(); ++i) {
        if (i == compressed.begin) {
            *at++ = ':';
            i += compressed.length;
            if (i == segments.size()) {
                *at++ = ':';
                break;
            }
        }
        if (i > 0) {
            *at++ = ':';
        }
        at = std::to_chars(at, text.data() + text.size(), segments[i], 16).ptr;
    }
    return {text.data(), at};
}

void IPv6Address::from_string(TextArgument text) {
    if (text.size() > MAX_TEXT) {
        refuse(text, "String too long");
    }
    if (text == "::") {
        octets_ = {};
        return;
    }

    // Counted before an empty one goes: "::2:3:4:5:6:7:8" has nine, and readers refuse it.
    std::array<std::string_view, NUM_SEGMENTS> split;
    const auto count = static_cast<std::size_t>(std::ranges::count(text, ':')) + 1;
    if (count > split.size()) {
        refuse(text, "Contains too many segments");
    }
    if (count < MIN_SEGMENTS) {
        refuse(text, "Contains too few segments");
    }
    std::string_view rest = text;
    for (std::size_t i = 0; i < count; ++i) {
        split[i] = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(split[i].size() + 1, rest.size()));
    }

    // Of the two empty segments that a "::" at an end makes, one goes.
    std::span segments(split.data(), count);
    if (segments.front().empty()) {
        if (!segments[1].empty()) {
            refuse(text, "Unexpected segment separator at the beginning");
        }
        segments = segments.subspan(1);
    } else if (segments.back().empty()) {
        if (!segments[count - 2].empty()) {
            refuse(text, "Unexpected segment separator at the end");
        }
        segments = segments.first(count - 1);
    }

    const auto empty = static_cast<std::size_t>(std::ranges::count(segments, std::string_view()));
    if (empty > 1) {
        refuse(text, "Multiple empty segments");
    }
    decltype(octets_) fresh{};
    std::size_t room = NUM_SEGMENTS;
    if (const auto end = dotted_end(segments.back())) {
        segments = segments.first(segments.size() - 1);
        room -= IPV4_SEGMENTS;
        std::ranges::copy(end->as_bytes_span_raw(), fresh.end() - 2 * IPV4_SEGMENTS);
    }
    // The empty segment stands for one zero segment at least.
    if (segments.size() > room) {
        refuse(text, "Contains too many segments");
    }
    if (empty == 0 && segments.size() < room) {
        refuse(text, "Contains too few segments");
    }
    std::uint8_t* at = fresh.data();
    for (const std::string_view segment : segments) {
        if (segment.empty()) {
            at += 2 * (room - segments.size() + 1);
            continue;
        }
        // As lenient as the scan of an IPv4 address; "-1" is 0xFFFF.
        impl::TextScan scan(segment);
        std::uint32_t value = 0;
        if (!scan.number<16>(value, 4) || !scan.at_end()) {
            refuse(text, "Invalid segment " + impl::quote(segment));
        }
        at = put(static_cast<std::uint16_t>(value), at);
    }
    octets_ = fresh;
}

}  // namespace nuv

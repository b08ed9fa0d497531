// SPDX-License-Identifier: Apache-2.0
#include "nuv/ip_address.hpp"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <random>
#include <typeinfo>
#include <unordered_set>

#include "nuv/ipv4_address.hpp"
#include "nuv/ipv6_address.hpp"
#include "support/enum_texts.hpp"
#include "support/json_text.hpp"

namespace nuv::test {

namespace {

std::unique_ptr<IPAddress> guess(const std::string& text) {
    return IPAddress::guess_version_and_parse(text);
}

/// A difference in what inet_pton() of glibc and this library accept: a text has it when `has` says
/// so.
struct Difference {
    const char* name = nullptr;
    bool accepted_here = false;
    bool (*has)(const std::string& text) = nullptr;
    int seen = 0;
};

bool has_any_of(const std::string& text, const char* characters) {
    return text.find_first_of(characters) != std::string::npos;
}

/// Decimal numbers with a zero in front of other digits, in a text's dotted part.
bool has_leading_zero(const std::string& text) {
    const std::size_t colon = text.rfind(':');
    const std::string dotted = colon == std::string::npos ? text : text.substr(colon + 1);
    for (std::size_t i = 0; i + 1 < dotted.size(); ++i) {
        if (dotted[i] == '0' && std::isdigit(static_cast<unsigned char>(dotted[i + 1])) != 0 &&
            (i == 0 || std::isdigit(static_cast<unsigned char>(dotted[i - 1])) == 0)) {
            return dotted.find('.') != std::string::npos;
        }
    }
    return false;
}

/// A text of IPv4 or IPv6, often with a few characters changed.
class TextSource {
public:
    std::string next(bool v6) {
        std::string text = v6 ? v6_text() : v4_text(600);
        for (std::uint32_t n = below(4); n > 0; --n) {
            const char c = ALPHABET[below(ALPHABET.size())];
            const std::size_t place = below(static_cast<std::uint32_t>(text.size()) + 1);
            switch (below(3)) {
                case 0:
                    text.insert(place, 1, c);
                    break;
                case 1:
                    text.erase(place, 1);
                    break;
                default:
                    text.replace(place, 1, 1, c);
            }
        }
        return text;
    }

private:
    static constexpr std::string_view ALPHABET = "0123456789abcdefABCDEFxX::::....+- \tg/";

    std::uint32_t below(std::uint64_t limit) {
        return static_cast<std::uint32_t>(random_() % limit);
    }
    std::string v4_text(std::uint32_t limit) {
        std::string text;
        for (int i = 0; i < 4; ++i) {
            text += i > 0 ? "." : "";
            text += std::to_string(below(below(2) == 0 ? limit : 256));
        }
        return text;
    }
    std::string v6_text() {
        std::string text;
        const bool dotted = below(4) == 0;
        const std::uint32_t hex = below(3) == 0 ? below(9) : 8 - (dotted ? 2 : 0);
        const std::uint32_t run = below(2) == 0 ? below(9) : 99;
        for (std::uint32_t i = 0; i < hex; ++i) {
            const std::uint32_t value = below(3) == 0 ? 0 : below(below(2) == 0 ? 0x10000 : 0x20);
            char digits[8];
            std::snprintf(digits, sizeof digits, below(5) == 0 ? "%04X" : "%x", value);
            text += i == run ? (i == 0 ? "::" : ":") : "";
            text += digits;
            text += i + 1 < hex || dotted ? ":" : "";
        }
        return text + (dotted ? v4_text(256) : run == hex ? "::" : "");
    }

    std::mt19937 random_{20261121};
};

}  // namespace

TEST(IPAddress, GuessesTheVersionByDotsAndColons) {
    const auto version = [](const std::string& text) {
        return message_of<std::invalid_argument>(
            [&] { return enum_to_string(guess(text)->get_version()); });
    };
    EXPECT_EQ(version("1.2.3.4"), "V4");
    EXPECT_EQ(version("::"), "V6");
    EXPECT_EQ(version("1:2:3:4:5:6:7:8"), "V6");
    EXPECT_EQ(version("::ffff:1.2.3.4"), "V6");
    for (const char* text : {"", "1.2.3", "1.2.3.4.5", "1:2", "1:2:3:4:5:6:7:8:9", "::1.2",
                             "::1.2.3", "::1.2.3.4.5", "1:1.2.3.4", "host"}) {
        EXPECT_EQ(version(text),
                  "Could not guess IP address version for \"" + std::string(text) + '"');
    }
    EXPECT_EQ(version("1.2.3.x"),
              "Could not parse IPv4 address \"1.2.3.x\": String contains invalid octets");
    EXPECT_EQ(version("1:2:3"),
              "Could not parse IPv6 address \"1:2:3\": Contains too few segments");
}

TEST(IPAddress, VersionsHaveTextsAndNothingElseHas) {
    for (int value = 0; value < 256; ++value) {
        const auto version = static_cast<IPAddress::Version>(value);
        EXPECT_EQ(message_of<std::invalid_argument>([&] { return enum_to_string(version); }),
                  value == 0   ? "V4"
                  : value == 1 ? "V6"
                               : "New IP address version not handled");
    }
    IPAddress::Version version{};
    EXPECT_TRUE(string_to_enum("V6", version) && version == IPAddress::Version::V6);
    EXPECT_FALSE(string_to_enum("v4", version) ||
                 string_to_enum("New IP address version not handled", version));
}

TEST(IPAddress, OrdersEveryV4AddressBeforeEveryV6Address) {
    const IPv4Address high(0xFFFFFFFF);
    const IPv6Address low;
    EXPECT_TRUE(high < low && low > high && high <= low && high != low);
    EXPECT_THROW(static_cast<void>(high.is_equal(low)), std::bad_cast);
    EXPECT_THROW(static_cast<void>(high.is_lt(low)), std::bad_cast);
    EXPECT_THROW(static_cast<void>(low.is_lt_eq(high)), std::bad_cast);
    EXPECT_TRUE(IPv4Address("9.255.0.0") < IPv4Address("10.0.0.0"));
    EXPECT_TRUE(IPv6Address("::ffff") < IPv6Address("::1:0"));
    EXPECT_TRUE(low.is_lt_eq(low) && !low.is_lt(low) && low.is_equal(low));
}

TEST(IPAddress, CopiesAreOfTheSameTypeAndSpansReachTheOctets) {
    for (const char* text : {"1.2.3.4", "1:2::3"}) {
        const auto address = guess(text);
        auto copy = address->clone();
        EXPECT_EQ(*copy, *address);
        EXPECT_EQ(std::hash<IPAddress>()(*copy), std::hash<IPAddress>()(*address));
        EXPECT_EQ(copy->num_octets(), copy->is_v4() ? 4U : 16U);
        EXPECT_EQ(copy->to_bytes().size(), copy->num_octets());
        copy->as_bytes_span_raw().back() = 0xFF;
        copy->as_bytes_span().front() = std::byte{0x10};
        EXPECT_EQ(copy->to_string(), copy->is_v4() ? "16.2.3.255" : "1001:2::ff");
        EXPECT_TRUE(copy->make_default()->is_unspecified());
        EXPECT_EQ(copy->make_default()->get_version(), address->get_version());
    }
    IPv4Address a("1.1.1.1"), b("2.2.2.2");
    a.swap(b);
    EXPECT_EQ(a.to_string() + b.to_string(), "2.2.2.21.1.1.1");
    EXPECT_EQ((std::unordered_set<IPv4Address>{a, b, a}).size(), 2U);
}

TEST(IPAddress, IsMadeOfTheVersionInJson) {
    const auto make = [](const std::string& text) {
        YAJLNode node = parse(text);
        SerializationContext ctx;
        return message_of([&] { return create_ip_address(node, ctx)->to_string(); });
    };
    EXPECT_EQ(make(R"({"version":"V4"})"), "0.0.0.0");
    EXPECT_EQ(make(R"({"version":"V6","value":"x"})"), "::");
    EXPECT_EQ(make(R"({"version":"V5"})"), R"(Deserialization of enum "version" failed, got "V5")");
    EXPECT_EQ(make("{}"), R"(Deserialization of enum "version" failed, got "")");
}

TEST(IPAddress, ReadsWhatInetPtonReadsButForTheseDifferences) {
    Difference differences[] = {
        {"blanks around a number", true, [](const auto& t) { return has_any_of(t, " \t"); }},
        {"signs", true, [](const auto& t) { return has_any_of(t, "+-"); }},
        {"0x before a segment", true, [](const auto& t) { return has_any_of(t, "xX"); }},
        {"zeros before a decimal number", true, has_leading_zero},
        {"nine segments, with :: for one at an end", false,
         [](const auto& t) { return std::ranges::count(t, ':') == 8; }},
        {"more than 39 characters", false, [](const auto& t) { return t.size() > 39; }},
    };
    TextSource source;
    int accepted = 0;
    for (int i = 0; i < 1000000; ++i) {
        const bool v6 = i % 2 == 0;
        const std::string text = source.next(v6);
        std::array<std::uint8_t, 16> octets{};
        const bool theirs = inet_pton(v6 ? AF_INET6 : AF_INET, text.c_str(), octets.data()) == 1;
        IPv6Address address_v6;
        IPv4Address address_v4;
        IPAddress& address = v6 ? static_cast<IPAddress&>(address_v6) : address_v4;
        bool ours = true;
        try {
            address.from_string(text);
        } catch (const std::invalid_argument&) {
            ours = false;
        }
        if (ours && theirs) {
            ++accepted;
            ASSERT_TRUE(std::ranges::equal(address.as_bytes_span_raw(),
                                           std::span(octets).first(address.num_octets())))
                << text;
        } else if (ours != theirs) {
            bool explained = false;
            for (Difference& difference : differences) {
                if (difference.accepted_here == ours && difference.has(text)) {
                    ++difference.seen;
                    explained = true;
                }
            }
            ASSERT_TRUE(explained) << '"' << text << "\" is " << (ours ? "" : "not ") << "accepted";
        }
    }
    EXPECT_GT(accepted, 100000);
    for (const Difference& difference : differences) {
        EXPECT_GT(difference.seen, 0) << difference.name;
    }
}

TEST(IPAddress, PrintsWhatInetNtopPrintsButAnIPv4CompatibleAddressInHex) {
    std::mt19937 random(6);
    int compatible = 0;
    for (int i = 0; i < 200000; ++i) {
        std::array<std::uint8_t, 16> octets{};
        for (std::size_t k = 0; k < octets.size(); k += 2) {
            const std::uint32_t bits = static_cast<std::uint32_t>(random());
            // half of the segments are zero, a few have all bits set, as in a mapped address
            const std::uint32_t value = bits % 2 == 0 ? 0 : bits % 16 == 1 ? 0xFFFF : bits >> 16U;
            octets[k] = static_cast<std::uint8_t>(value >> 8U);
            octets[k + 1] = static_cast<std::uint8_t>(value);
        }
        if (i % 8 == 0) {
            std::fill_n(octets.begin(), 12, std::uint8_t{0});
            octets[10] = octets[11] = i % 16 == 0 ? 0xFF : 0;
        }
        std::array<char, 64> text{};
        const IPv4Address v4{std::span<const std::uint8_t>(octets).last<4>()};
        EXPECT_EQ(v4.to_string(), inet_ntop(AF_INET, &octets[12], text.data(), text.size()));
        const IPv6Address v6{std::span<const std::uint8_t>(octets)};
        const std::string theirs = inet_ntop(AF_INET6, octets.data(), text.data(), text.size());
        if (theirs.find('.') != std::string::npos && v6.is_compatible_v4()) {
            ++compatible;
            EXPECT_EQ(v6.to_string().find('.'), std::string::npos);
        } else {
            EXPECT_EQ(v6.to_string(), theirs);
        }
        EXPECT_EQ(IPv6Address(v6.to_string()), v6);
    }
    EXPECT_GT(compatible, 0);
}

}  // namespace nuv::test

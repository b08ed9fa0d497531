// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_rsn_element.hpp"

#include <gtest/gtest.h>

#include <set>

#include "nuv/ieee802_11/rsn_security.hpp"
#include "support/elements.hpp"

namespace nuv::ieee802_11 {
namespace {

using test::as_written;
using test::read_as;

using RSN = IEEE802_11_RSNElement;
using Suite = IEEE802_11_CipherSuite;

/// An RSN element: the octets of `body` behind a header that counts them.
std::string rsn(const std::string& body) {
    test::Octets octets = test::from_hex(body);
    octets.insert(octets.begin(), {48, static_cast<std::uint8_t>(octets.size())});
    return test::to_hex(octets);
}

std::string repeat(std::size_t times, const std::string& hex) {
    std::string all;
    for (; times > 0; --times) {
        all += " " + hex;
    }
    return all;
}

TEST(RSNElement, ReadsThePartsInOrder) {
    const auto full = read_as<RSN>(
        rsn("01 00 00 0f ac 04 02 00 00 0f ac 02 00 0f ac 04 01 00 00 0f ac 08 c0 00 01 00" +
            repeat(16, "a7") + " 00 0f ac 06"));
    EXPECT_EQ(full.get_group_data(), Suite(Suite::CCMP_128));
    EXPECT_EQ(full.get_pairwise_cipher_list(),
              (RSN::Suites{Suite(Suite::TKIP), Suite(Suite::CCMP_128)}));
    EXPECT_EQ(full.get_akm_suite_list(), RSN::Suites{Suite(Suite::AKM_SAE)});
    EXPECT_EQ(full.get_rsn_capabilities(), 0x00C0);
    EXPECT_EQ(full.get_pmkid_list()[0][15], 0xA7);
    EXPECT_EQ(full.get_group_management_cipher(), Suite(6));
}

TEST(CipherSuite, IsReadFromExactlyTheTextThatItIsWrittenAs) {
    Suite suite;
    for (unsigned type = 0; type < 256; ++type) {
        const Suite written({0x12, 0xAB, 0x0F}, static_cast<std::uint8_t>(type));
        EXPECT_TRUE(suite.parse_string(written.to_string()) && suite == written) << type;
    }
    for (const char* other : {"", "12-AB-0F", "12-AB-0F:", "12-AB-0F:256", "12-AB-0F:04",
                              "12-ab-0F:4", "2-AB-0F:4", "12:AB:0F:4", "12-AB-0F:4 "}) {
        EXPECT_FALSE(suite.parse_string(other) || suite.type != 255) << other;
    }
}

TEST(RSNElement, EveryLengthOfZerosBehindTheVersionHasItsOutcome) {
    // Parts are looked for one by one: the two octets of Length 4 are a pairwise count.
    const std::set<unsigned> whole{2, 4, 6, 8, 10, 12, 14, 18};
    for (unsigned length = 2; length <= 60; ++length) {
        RSN element;
        serialization::SerializationContext ctx;
        const auto octets = test::from_hex(rsn("01 00" + repeat(length - 2, "00")));
        EXPECT_EQ(test::message_of([&] { element.deserialize(octets, ctx); }),
                  whole.contains(length) ? "" : "Sanity Check: Unconsumed length")
            << length;
    }
}

TEST(RSNElement, IsWrittenUpToItsLastPresentPart) {
    const char* absent[] = {" 00 0f ac 00", " 00 00", " 00 00", " 00 00", " 00 00", ""};
    const std::string present[] = {
        " 00 0f ac 02", " 01 00 00 0f ac 04",        " 01 00 00 0f ac 01",
        " 01 00",       " 01 00" + repeat(16, "05"), " 00 0f ac 06"};
    for (unsigned parts = 0; parts < 64; ++parts) {
        RSN element;
        std::string body = "01 00";
        for (unsigned part = 0; part < 6; ++part) {
            if (parts >> part != 0) {
                body += (parts >> part & 1U) != 0 ? present[part] : absent[part];
            }
        }
        RSN::PMKID pmkid{};
        pmkid.fill(5);
        if ((parts & 1U) != 0) {
            element.set_group_data(Suite(2));
        }
        element.set_pairwise_cipher_list((parts & 2U) != 0 ? RSN::Suites{Suite(4)} : RSN::Suites{});
        element.set_akm_suite_list((parts & 4U) != 0 ? RSN::Suites{Suite(1)} : RSN::Suites{});
        element.set_rsn_capabilities((parts & 8U) != 0 ? 1 : 0);
        element.set_pmkid_list((parts & 16U) != 0 ? RSN::PMKIDs{pmkid} : RSN::PMKIDs{});
        if ((parts & 32U) != 0) {
            element.set_group_management_cipher(Suite(6));
        }
        EXPECT_EQ(as_written(element), rsn(body)) << parts;
        EXPECT_EQ(element.has_group_data(), (parts & 1U) != 0);
        EXPECT_EQ(element.has_pmkid_list(), (parts & 16U) != 0);
        EXPECT_EQ(element.has_group_management_cipher(), (parts & 32U) != 0);
    }
}

TEST(RSNElement, ZeroCapabilitiesCountAsAbsent) {
    EXPECT_EQ(as_written(read_as<RSN>("30 0e 01 00 00 0f ac 04 00 00 00 00 00 00 00 00")),
              "30 06 01 00 00 0f ac 04");
}

TEST(RSNElement, ListsAreBounded) {
    RSN element;
    element.set_pairwise_cipher_list({Suite(4)});
    element.set_pairwise_cipher_list(std::vector<Suite>(11));
    EXPECT_EQ(element.get_pairwise_cipher_list().size(), 1U) << "a longer list is ignored";
    element.set_pairwise_cipher_list(std::vector<Suite>(10));
    element.set_akm_suite_list(std::vector<Suite>(10));
    element.set_pmkid_list(std::vector<RSN::PMKID>(9));
    EXPECT_EQ(element.get_length(), 240U);
    EXPECT_EQ(as_written(element).substr(0, 5), "30 ee");
    element.set_pmkid_list(std::vector<RSN::PMKID>(10));
    EXPECT_EQ(element.get_length(), 256U);
    EXPECT_EQ(as_written(element), "Invalid length") << "the header counts";
}

TEST(RSNSecurity, ModesMapToTheirSuitesAndBack) {
    const struct {
        WLANSecurity mode;
        const char* hex;
        WLANSecurity back;
    } cases[] = {
        {WLANSecurity::UNDEFINED, "30 06 01 00 00 00 00 00", WLANSecurity::UNDEFINED},
        {WLANSecurity::NONE, "30 02 01 00", WLANSecurity::NONE},
        {WLANSecurity::WEP_OPEN, "30 06 01 00 00 00 00 00", WLANSecurity::UNDEFINED},
        {WLANSecurity::WEP_SHARED, "30 06 01 00 00 00 00 00", WLANSecurity::UNDEFINED},
        {WLANSecurity::WPAPSK, "30 12 01 00 00 0f ac 02 01 00 00 0f ac 02 01 00 00 0f ac 02",
         WLANSecurity::WPAPSK},
        {WLANSecurity::WPA2PSK, "30 12 01 00 00 0f ac 04 01 00 00 0f ac 04 01 00 00 0f ac 02",
         WLANSecurity::WPA2PSK},
        {WLANSecurity::WPA_WPA2_MIXED,
         "30 16 01 00 00 0f ac 02 02 00 00 0f ac 02 00 0f ac 04 01 00 00 0f ac 02",
         WLANSecurity::WPA_WPA2_MIXED},
        {WLANSecurity::WPAENT, "30 12 01 00 00 0f ac 02 01 00 00 0f ac 02 01 00 00 0f ac 01",
         WLANSecurity::WPAENT},
        {WLANSecurity::WPA2ENT, "30 12 01 00 00 0f ac 04 01 00 00 0f ac 04 01 00 00 0f ac 01",
         WLANSecurity::WPA2ENT},
        {WLANSecurity::WPA3PSK, "30 12 01 00 00 0f ac 04 01 00 00 0f ac 04 01 00 00 0f ac 08",
         WLANSecurity::WPA3PSK},
        {WLANSecurity::WPA2_WPA3_MIXED,
         "30 16 01 00 00 0f ac 04 01 00 00 0f ac 04 02 00 00 0f ac 02 00 0f ac 08",
         WLANSecurity::WPA2_WPA3_MIXED},
        {WLANSecurity::OWE, "30 12 01 00 00 0f ac 04 01 00 00 0f ac 04 01 00 00 0f ac 12",
         WLANSecurity::OWE},
        {WLANSecurity::INVALID, "30 06 01 00 00 00 00 00", WLANSecurity::UNDEFINED},
        {WLANSecurity{13}, "30 02 01 00", WLANSecurity::NONE},
        {WLANSecurity{255}, "30 02 01 00", WLANSecurity::NONE},
    };
    for (const auto& c : cases) {
        const auto element = create_rsn_element_from_security(c.mode);
        EXPECT_EQ(as_written(*element), c.hex);
        EXPECT_EQ(security_from_rsn_element(*element), c.back) << c.hex;
    }
}

TEST(RSNSecurity, OnlyTheCombinationsOfAModeAreOne) {
    using S = WLANSecurity;
    const auto classify = [](std::uint8_t group, const std::vector<std::uint8_t>& pairwise,
                             const std::vector<std::uint8_t>& akm, bool vendor = false) {
        const auto suites = [](const std::vector<std::uint8_t>& types) {
            RSN::Suites list;
            for (const std::uint8_t type : types) {
                list.push_back(Suite(type));
            }
            return list;
        };
        RSN element;
        element.set_group_data(Suite(group));
        element.set_pairwise_cipher_list(suites(pairwise));
        RSN::Suites akms = suites(akm);
        if (vendor) {
            akms[0].oui = {0x00, 0x50, 0xF2};
        }
        element.set_akm_suite_list(akms);
        return security_from_rsn_element(element);
    };
    // The order of two suites does not count.
    EXPECT_EQ(classify(2, {4, 2}, {2}), S::WPA_WPA2_MIXED);
    EXPECT_EQ(classify(4, {4}, {8, 2}), S::WPA2_WPA3_MIXED);
    // Every AKM type alone.
    for (unsigned type = 0; type < 256; ++type) {
        const S expected = type == 1    ? S::WPA2ENT
                           : type == 2  ? S::WPA2PSK
                           : type == 8  ? S::WPA3PSK
                           : type == 18 ? S::OWE
                                        : S::UNDEFINED;
        EXPECT_EQ(classify(4, {4}, {static_cast<std::uint8_t>(type)}), expected) << type;
    }
    EXPECT_EQ(classify(4, {4}, {}), S::UNDEFINED);
    EXPECT_EQ(classify(2, {2}, {}), S::UNDEFINED);
    EXPECT_EQ(classify(4, {}, {2}), S::UNDEFINED);
    EXPECT_EQ(classify(4, {4}, {2, 2}), S::UNDEFINED);
    EXPECT_EQ(classify(4, {4}, {2, 8, 2}), S::UNDEFINED);
    EXPECT_EQ(classify(4, {4, 2}, {2}), S::UNDEFINED);
    EXPECT_EQ(classify(2, {2, 2}, {2}), S::UNDEFINED);
    EXPECT_EQ(classify(2, {2, 4}, {1}), S::UNDEFINED);
    EXPECT_EQ(classify(2, {2}, {8}), S::UNDEFINED);
    EXPECT_EQ(classify(5, {4}, {2}), S::UNDEFINED);
    EXPECT_EQ(classify(4, {4}, {2}, true), S::UNDEFINED) << "another OUI";
}

}  // namespace
}  // namespace nuv::ieee802_11

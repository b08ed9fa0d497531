// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_rsn_element.hpp"

#include "nuv/ieee802_11/rsn_security.hpp"
#include "tests/support/codecs.hpp"

namespace nuv::ieee802_11 {
namespace {

using test::written;

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

TEST(CipherSuite, IsReadFromExactlyTheTextThatItIsWrittenAs) {
    Suite suite;
    for (unsigned type = 0; type < 256; ++type) {
        const Suite any({0x12, 0xAB, 0x0F}, static_cast<std::uint8_t>(type));
        EXPECT_TRUE(suite.parse_string(any.to_string()) && suite == any) << type;
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
        EXPECT_EQ(test::read_octets(rsn("01 00" + repeat(length - 2, "00")), element),
                  whole.contains(length) ? "" : "Sanity Check: Unconsumed length")
            << length;
    }
}

TEST(RSNElement, IsWrittenUpToItsLastPresentPart) {
    const char* absent[] = {" 00 0f ac 00", " 00 00", " 00 00", " 00 00", " 00 00", ""};
    const std::string present[] = {
        " 00 0f ac 02", " 01 00 00 0f ac 04",        " 01 00 00 0f ac 01",
        " 01 00",       " 01 00" + repeat(16, "05"), " 00 0f ac 06"};
    RSN::PMKID pmkid{};
    pmkid.fill(5);
    for (unsigned parts = 0; parts < 64; ++parts) {
        const std::bitset<6> has(parts);
        std::string body = "01 00";
        for (unsigned part = 0; parts >> part != 0; ++part) {
            body += has[part] ? present[part] : absent[part];
        }
        RSN element;
        if (has[0]) {
            element.set_group_data(Suite(2));
        }
        element.set_pairwise_cipher_list(has[1] ? RSN::Suites{Suite(4)} : RSN::Suites{});
        element.set_akm_suite_list(has[2] ? RSN::Suites{Suite(1)} : RSN::Suites{});
        element.set_rsn_capabilities(has[3] ? 1 : 0);
        element.set_pmkid_list(has[4] ? RSN::PMKIDs{pmkid} : RSN::PMKIDs{});
        if (has[5]) {
            element.set_group_management_cipher(Suite(6));
        }
        EXPECT_EQ(written(element), rsn(body)) << parts;
        EXPECT_EQ(element.has_group_data(), has[0]);
        EXPECT_EQ(element.has_pmkid_list(), has[4]);
        EXPECT_EQ(element.has_group_management_cipher(), has[5]);
        EXPECT_EQ(element.get_rsn_capabilities(), has[3] ? 1 : 0);
        EXPECT_EQ(element.get_pmkid_list().size(), has[4] ? 1 : 0);
        EXPECT_EQ(element.get_group_management_cipher() == Suite(6), has[5]);
    }
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
    EXPECT_EQ(written(element).substr(0, 5), "30 ee");
    element.set_pmkid_list(std::vector<RSN::PMKID>(10));
    EXPECT_EQ(element.get_length(), 256U);
    EXPECT_EQ(written(element), "Invalid length") << "the header counts";
}

/// An element with suites of these types: group, pairwise, AKM.
RSN with_suites(std::uint8_t group, const test::Octets& pairwise, const test::Octets& akm) {
    const auto suites = [](const test::Octets& types) {
        RSN::Suites list;
        for (const std::uint8_t type : types) {
            list.push_back(Suite(type));
        }
        return list;
    };
    RSN element;
    element.set_group_data(Suite(group));
    element.set_pairwise_cipher_list(suites(pairwise));
    element.set_akm_suite_list(suites(akm));
    return element;
}

TEST(RSNSecurity, ModesMapToTheirSuitesAndBack) {
    using enum WLANSecurity;
    const struct {
        WLANSecurity mode;
        std::uint8_t group;
        test::Octets pairwise, akm;
    } rows[] = {
        {WPAPSK, 2, {2}, {2}},
        {WPA2PSK, 4, {4}, {2}},
        {WPA_WPA2_MIXED, 2, {2, 4}, {2}},
        {WPAENT, 2, {2}, {1}},
        {WPA2ENT, 4, {4}, {1}},
        {WPA3PSK, 4, {4}, {8}},
        {WPA2_WPA3_MIXED, 4, {4}, {2, 8}},
        {OWE, 4, {4}, {18}},
    };
    for (const auto& [mode, group, pairwise, akm] : rows) {
        RSN element = with_suites(group, pairwise, akm);
        EXPECT_EQ(*create_rsn_element_from_security(mode), element);
        EXPECT_EQ(security_from_rsn_element(element), mode);
        // The order of two suites does not count.
        element =
            with_suites(group, {pairwise.rbegin(), pairwise.rend()}, {akm.rbegin(), akm.rend()});
        EXPECT_EQ(security_from_rsn_element(element), mode);
    }
    for (const WLANSecurity mode :
         {UNDEFINED, WEP_OPEN, WEP_SHARED, INVALID, NONE, WLANSecurity{13}, WLANSecurity{255}}) {
        const auto element = create_rsn_element_from_security(mode);
        const bool none = mode == NONE || mode > INVALID;
        EXPECT_EQ(written(*element), none ? "30 02 01 00" : "30 06 01 00 00 00 00 00");
        EXPECT_EQ(security_from_rsn_element(*element), none ? NONE : UNDEFINED);
    }
}

TEST(RSNSecurity, OnlyTheCombinationsOfAModeAreOne) {
    using enum WLANSecurity;
    for (unsigned type = 0; type < 256; ++type) {  // every AKM type alone
        EXPECT_EQ(security_from_rsn_element(with_suites(4, {4}, {static_cast<std::uint8_t>(type)})),
                  type == 1    ? WPA2ENT
                  : type == 2  ? WPA2PSK
                  : type == 8  ? WPA3PSK
                  : type == 18 ? OWE
                               : UNDEFINED)
            << type;
    }
    RSN of_vendor = with_suites(4, {4}, {});
    of_vendor.set_akm_suite_list({Suite({0x00, 0x50, 0xF2}, 2)});
    for (const RSN& element :
         {with_suites(4, {4}, {}), with_suites(2, {2}, {}), with_suites(4, {}, {2}),
          with_suites(4, {4}, {2, 2}), with_suites(4, {4}, {2, 8, 2}), with_suites(4, {4, 2}, {2}),
          with_suites(2, {2, 2}, {2}), with_suites(2, {2, 4}, {1}), with_suites(2, {2}, {8}),
          with_suites(5, {4}, {2}), of_vendor}) {
        EXPECT_EQ(security_from_rsn_element(element), UNDEFINED) << written(element);
    }
}

}  // namespace
}  // namespace nuv::ieee802_11

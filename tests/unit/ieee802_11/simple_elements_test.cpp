// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "nuv/ieee802_11/ieee802_11_dummy_element.hpp"
#include "nuv/ieee802_11/ieee802_11_extended_supported_rates_bss_membership_selector.hpp"
#include "nuv/ieee802_11/ieee802_11_mobility_domain.hpp"
#include "nuv/ieee802_11/ieee802_11_multi_link.hpp"
#include "nuv/ieee802_11/ieee802_11_non_inheritance.hpp"
#include "nuv/ieee802_11/ieee802_11_power_capability.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_channels.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_operating_classes.hpp"
#include "nuv/ieee802_11/ieee802_11_supported_rates_bss_membership_selector.hpp"
#include "nuv/ieee802_11/ieee802_11_tid_to_link_mapping.hpp"
#include "support/elements.hpp"

namespace nuv::ieee802_11 {
namespace {

using test::expect_round_trip;
using test::read_element;
using test::read_error;
using test::write_element;
using test::write_error;

using Rates = IEEE802_11_SupportedRatesBSSMembershipSelector;
using ExtendedRates = IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector;
using Classes = IEEE802_11_SupportedOperatingClasses;
using Dummy = IEEE802_11_DummyElement;
using ID = IEEE802_11_Element_ID;

constexpr const char* octet_error = "Deserialization of type std::uint8_t failed.";

std::string zeros(std::size_t n) { return test::to_hex(test::Octets(n)); }

TEST(SupportedRates, HoldOneToEightRates) {
    EXPECT_EQ(expect_round_trip<Rates>("01 04 82 84 8b 96").get_supported_rates(),
              (Rates::Rates{0x82, 0x84, 0x8B, 0x96}));
    expect_round_trip<Rates>("01 08 01 02 03 04 05 06 07 08");
    EXPECT_EQ(read_error<Rates>("01 09 01 02 03 04 05 06 07 08 09"), "Invalid size");
    Rates rates;
    rates.set_supported_rates({1, 2, 3, 4, 5, 6, 7, 8, 9});
    EXPECT_EQ(write_error(rates), "Invalid size");
}

TEST(SupportedRates, EmptyListIsReadButNotWritten) {
    Rates rates;
    rates.set_supported_rates({1});
    EXPECT_EQ(read_element(rates, "01 00"), "");
    EXPECT_TRUE(rates.get_supported_rates().empty());
    EXPECT_EQ(write_error(rates), "Invalid size");
}

TEST(ExtendedSupportedRates, HoldUpTo255Rates) {
    expect_round_trip<ExtendedRates>("32 ff " + zeros(255));
    EXPECT_EQ(write_error(ExtendedRates()), "Invalid size");
    EXPECT_EQ(read_error<ExtendedRates>("32 00"), "");
    ExtendedRates rates;
    rates.set_extended_supported_rates(std::vector<std::uint8_t>(256));
    EXPECT_EQ(write_error(rates), "Invalid size");
}

TEST(MobilityDomain, WritesItsIdentifierMostSignificantOctetFirst) {
    IEEE802_11_MobilityDomain element;
    element.set_mdid(0x1234);
    element.set_capabilities(0b10);
    EXPECT_EQ(write_element(element), "36 03 12 34 02");
    EXPECT_TRUE(element == expect_round_trip<IEEE802_11_MobilityDomain>("36 03 12 34 02"));
    EXPECT_EQ(read_error<IEEE802_11_MobilityDomain>("36 01 12"),
              "Deserialization of type std::uint16_t failed.");
    EXPECT_EQ(read_error<IEEE802_11_MobilityDomain>("36 02 12 34"), octet_error);
}

TEST(SupportedChannels, AreWholePairs) {
    IEEE802_11_SupportedChannels element;
    element.add_supported_channel(36, 4);
    element.add_supported_channel(100, 11);
    EXPECT_EQ(write_element(element), "24 04 24 04 64 0b");
    EXPECT_TRUE(element == expect_round_trip<IEEE802_11_SupportedChannels>("24 04 24 04 64 0b"));
    expect_round_trip<IEEE802_11_SupportedChannels>("24 00");
    EXPECT_EQ(read_error<IEEE802_11_SupportedChannels>("24 03 24 04 64"), "Invalid length");
    while (element.get_channels_vector().size() < 128) {
        element.add_supported_channel(1, 1);
    }
    EXPECT_EQ(write_error(element), "Invalid size");
}

TEST(SupportedOperatingClasses, AreThreeListsWithDelimitersBetween) {
    const struct {
        const char* hex;
        Classes::Classes capable, extension;
        Classes::Duples duples;
    } cases[] = {
        {"3b 01 51", {}, {}, {}},
        {"3b 03 51 53 54", {83, 84}, {}, {}},
        // 130 is a class, too; in the first list it is the delimiter, in the second one it is data
        {"3b 06 51 73 76 82 83 82", {115, 118}, {131, 130}, {}},
        {"3b 07 51 73 00 53 54 00 82", {115}, {}, {0x5354, 0x0082}},
        {"3b 07 51 73 82 83 00 53 54", {115}, {131}, {0x5354}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.hex);
        const auto element = expect_round_trip<Classes>(c.hex);
        EXPECT_EQ(element.get_current_opclass(), 81);
        EXPECT_EQ(element.get_capable_opclasses(), c.capable);
        EXPECT_EQ(element.get_extension_vector(), c.extension);
        EXPECT_EQ(element.get_duple_opclasses(), c.duples);
    }
}

TEST(SupportedOperatingClasses, RefuseWhatIsNoWholeNumberOfDuples) {
    for (const char* hex : {"3b 02 51 00", "3b 03 51 00 53", "3b 05 51 82 83 00 53"}) {
        EXPECT_EQ(read_error<Classes>(hex),
                  "Invalid length: must fit IEEE802_11_DupleOperatingClass");
    }
    EXPECT_EQ(read_error<Classes>("3b 00"), octet_error);
}

TEST(SupportedOperatingClasses, DelimiterWithoutListIsNotWrittenAgain) {
    expect_round_trip<Classes>("3b 03 51 53 82", "3b 02 51 53");
}

TEST(SupportedOperatingClasses, BodyHolds255Octets) {
    EXPECT_EQ(write_error(Classes(81, std::vector<std::uint8_t>(255, 1))), "Invalid length");
    EXPECT_EQ(Classes(81, std::vector<std::uint8_t>(254, 1)).get_length(), 257U);
}

TEST(NonInheritance, CountsOneOctetMoreThanItWrites) {
    IEEE802_11_Non_Inheritance element;
    element.set_ids({ID::RSN});
    EXPECT_EQ(test::written(element), "ff 05 38 01 30 00");
    EXPECT_EQ(element.get_length(), 7U);
}

TEST(NonInheritance, ReadsTheStandardsLength) {
    IEEE802_11_Non_Inheritance element;
    EXPECT_EQ(read_element(element, "ff 06 38 01 30 02 23 6c"), "");
    EXPECT_EQ(element.get_ids(), (IEEE802_11_Non_Inheritance::Ids{ID::RSN}));
    EXPECT_EQ(element.get_extended_ids(), (IEEE802_11_Non_Inheritance::ExtendedIds{
                                              IEEE802_11_Element_ID_Extension::HE_CAPABILITIES,
                                              IEEE802_11_Element_ID_Extension::EHT_CAPABILITIES}));
    EXPECT_EQ(read_element(element, "ff 04 38 02 30 00"), octet_error);
}

TEST(RawElement, KeepsItsBodyAndBoundsIt) {
    const auto power = expect_round_trip<IEEE802_11_PowerCapability>("21 02 00 14");
    EXPECT_EQ(power.get_body(), (IEEE802_11_Body{0x00, 0x14}));
    EXPECT_FALSE(power.is_dummy());
    expect_round_trip<IEEE802_11_PowerCapability>("21 ff " + zeros(255));
    expect_round_trip<IEEE802_11_TID_to_Link_Mapping>("ff ff 6d " + zeros(254));
    expect_round_trip<IEEE802_11_MultiLink>("ff 03 6b 01 02");

    const std::vector<std::uint8_t> too_long(256);
    IEEE802_11_PowerCapability plain;
    plain.set_body(too_long);
    EXPECT_EQ(write_error(plain), "Invalid length");
    IEEE802_11_TID_to_Link_Mapping extended;
    extended.set_body(std::span(too_long).first(255));
    EXPECT_EQ(write_error(extended), "Invalid length");
    IEEE802_11_MultiLink multi_link;
    multi_link.set_body(std::span(too_long).first(255));
    EXPECT_EQ(write_error(multi_link), "Invalid length");
}

TEST(MultiLink, ChecksItsIdentifiers) {
    EXPECT_EQ(read_error<IEEE802_11_MultiLink>("fe 01 6b"), "Invalid ID");
    EXPECT_EQ(read_error<IEEE802_11_MultiLink>("ff 01 6c"), "Unexpected ID");
}

TEST(DummyElement, KeepsTheSizeAndWritesZeros) {
    Dummy vendor(ID::VENDOR_SPECIFIC);
    EXPECT_EQ(read_element(vendor, "dd 07 00 50 f2 02 00 01 00"), "");
    EXPECT_EQ(write_element(vendor), "dd 07 00 00 00 00 00 00 00");
    Dummy extended(ID::ELEMENT_ID_EXTENSION);
    EXPECT_EQ(extended.get_extension_type(), IEEE802_11_Element_ID_Extension::NO_EXTENSION);
    EXPECT_EQ(read_element(extended, "ff 03 3b 01 02"), "");
    EXPECT_EQ(extended.get_extension_type(),
              IEEE802_11_Element_ID_Extension::HE_6_GHZ_BAND_CAPABILITIES);
    EXPECT_EQ(write_element(extended), "ff 03 3b 00 00");
}

TEST(DummyElement, RefusesWhatDoesNotFit) {
    const struct {
        std::uint8_t id;
        const char* hex;
        const char* error;
    } read_cases[] = {
        {10, "0b 00", "Invalid type"},
        {221, "dd 02 00 50", "Invalid length: must fit an OUI"},
        {221, "dd 03 00 50 f2", ""},
        {255, "ff 00", "Invalid length: must fit an OUI"},
        {255, "ff 01 3b", ""},
        {10, "0a 02", "Seek failed"},  // the octet behind it is the only one left
        {10, "0a 00", ""},
    };
    for (const auto& c : read_cases) {
        Dummy element{ID{c.id}};
        EXPECT_EQ(read_element(element, c.hex), c.error) << c.hex;
    }
    const struct {
        std::uint8_t id;
        std::uint16_t body;
        bool fits;
    } write_cases[] = {
        {221, 2, false},   {221, 3, true},  {221, 256, false}, {255, 254, true},
        {255, 255, false}, {10, 255, true}, {10, 256, false},
    };
    for (const auto& c : write_cases) {
        const Dummy element(ID{c.id}, c.body);
        if (c.fits) {
            write_element(element);
        } else {
            EXPECT_EQ(write_error(element), "Invalid length: must fit an OUI");
        }
    }
}

TEST(Element, TypedNeverEqualsRawWhateverTheOctets) {
    IEEE802_11_MobilityDomain typed;
    Dummy raw(ID::MOBILITY_DOMAIN, 3);
    const IEEE802_11_Element_Base& a = typed;
    const IEEE802_11_Element_Base& b = raw;
    EXPECT_FALSE(a == b);
    EXPECT_FALSE(b == a);
    EXPECT_TRUE(b == Dummy(ID::MOBILITY_DOMAIN, 3)) << "raw ones by ID, extension and size";
    EXPECT_FALSE(b == Dummy(ID::MOBILITY_DOMAIN, 4));
    EXPECT_FALSE(a == IEEE802_11_PowerCapability());
}

TEST(Element, RunningPastTheEndLeavesWhatTheKindOfStreamMakesOfIt) {
    // Length 9, three octets there: all fields are, the rest is not.
    const test::Octets octets = test::from_hex("36 09 12 34 02");
    serialization::SerializationContext ctx;
    IEEE802_11_MobilityDomain element;
    EXPECT_EQ(element.deserialize(octets, ctx), std::ios_base::failbit);

    std::stringstream is(test::to_string(octets));
    element.deserialize_impl(is, ctx);
    EXPECT_EQ(is.rdstate(), std::ios_base::failbit);
    is.clear();
    EXPECT_EQ(is.tellg(), 5) << "it stands behind what was read";
    EXPECT_EQ(element.get_mdid(), 0x1234);

    // Only its first octet is there.
    std::stringstream cut(test::to_string(octets).substr(0, 3));
    EXPECT_EQ(test::message_of([&] { element.deserialize_impl(cut, ctx); }),
              "Deserialization of type std::uint16_t failed.");
    EXPECT_EQ(cut.rdstate(), std::ios_base::failbit);
}

TEST(Element, NeedsAStreamWithAPosition) {
    class Pipe : public std::streambuf {
    public:
        Pipe() { setg(octets_, octets_, octets_ + sizeof octets_); }

    private:
        char octets_[5] = {54, 3, 0, 0, 0};
    } pipe;
    std::istream is(&pipe);
    serialization::SerializationContext ctx;
    IEEE802_11_MobilityDomain element;
    EXPECT_THROW(element.deserialize_impl(is, ctx), std::logic_error);
}

}  // namespace
}  // namespace nuv::ieee802_11

// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "nuv/ieee802_11.hpp"
#include "nuv_platform/fake/fake_platform.hpp"
#include "tests/support/codecs.hpp"

namespace nuv::ieee802_11 {
namespace {

using Container = AssocRequestFrame::ElementContainer;
using ID = IEEE802_11_Element_ID;
using Ext = IEEE802_11_Element_ID_Extension;

/// Capability information 0x1104, listen interval, SSID "ab".
const std::string fixed = "04 11 0a 00 00 02 61 62 ";
const std::string ht =
    "2d 1a 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 ";
const std::string rsn = "30 06 01 00 00 0f ac 04 ";
const std::string vendor = "dd 03 00 50 f2 ";
const std::string ttlm = "ff 02 6d 04 ";

/// Reads a frame; expects that to succeed and to end in this state.
AssocRequestFrame read(const std::string& hex,
                       std::ios_base::iostate state = std::ios_base::eofbit) {
    serialization::SerializationContext ctx;
    AssocRequestFrame frame;
    EXPECT_EQ(frame.deserialize(test::from_hex(hex), ctx), state) << hex;
    return frame;
}

TEST(AssocRequestFrame, ReadsItsFixedFields) {
    const AssocRequestFrame frame = read(fixed);
    EXPECT_EQ(frame.get_capability_information(), 0x1104);
    EXPECT_EQ(frame.get_listen_interval(), 0x0A00) << "most significant octet first";
    EXPECT_EQ(frame.get_ssid().string_view(), "ab");
    EXPECT_EQ(test::written(frame) + " ", fixed);
    EXPECT_EQ(frame.get_length(), 8U);

    AssocRequestFrame built;
    built.set_capability_information(0x1104);
    built.set_listen_interval(0x0A00);
    built.set_ssid(SSID(std::string_view("ab")));
    EXPECT_TRUE(built == frame);
    built.set_ssid({});
    EXPECT_FALSE(built == frame);
    EXPECT_TRUE(read("04 11 0a 00 00 00") == built) << "an empty SSID is valid";
}

TEST(AssocRequestFrame, LogsWhyAnExtensionCannotBeReadAndWhatEHTLacks) {
    platform::FakePlatform fake;
    serialization::SerializationContext ctx;
    AssocRequestFrame frame;
    for (const char* cut : {"ff 01", "ff"}) {
        EXPECT_THROW(frame.deserialize(test::from_hex(fixed + cut), ctx),
                     serialization::SerializationException);
    }
    EXPECT_THROW(Container().create_extended_element(Ext::EHT_CAPABILITIES),
                 serialization::SerializationException);
    EXPECT_EQ(fake.log().texts(), (std::vector<std::string>{
                                      "Error reading extended element ID. f: 0 b: 0 e: 1",
                                      "Error reading extended element ID. f: 1 b: 0 e: 0",
                                      "EHT CAPABILITIES IE without preceding HE CAPABILITIES IE"}));
    for (const auto& record : fake.log().records()) {
        EXPECT_EQ(record.level, 0);
        EXPECT_EQ(record.module, "assoc_request_frame");
        EXPECT_EQ(record.file, "src/shared/ieee802_11/ieee802_11_assoc_request_frame");
    }
}

TEST(AssocRequestFrame, FileStreamsSeekPastTheirEnd) {
    const auto path = testing::TempDir() + "nuv_frame_" + std::to_string(::getpid());
    const auto read_file = [&](const std::string& hex) {
        const std::string bytes = test::to_string(test::from_hex(hex));
        std::ofstream(path, std::ios_base::binary) << bytes;
        std::ifstream is(path, std::ios_base::binary);
        serialization::SerializationContext ctx;
        AssocRequestFrame frame;
        const std::string error = test::message_of([&] { frame.deserialize_impl(is, ctx); });
        return error + (is.eof() ? " eof" : "") + (is.fail() ? " fail" : "");
    };
    platform::FakePlatform fake;
    EXPECT_EQ(read_file(fixed + ht), " eof");
    EXPECT_EQ(read_file(fixed + "36 09 12 34 02"), " eof");
    EXPECT_EQ(read_file(fixed + "0a 09 00 00 00"), " eof");
    EXPECT_EQ(read_file(fixed + "ff"), "Error reading extended element ID! eof");
    std::filesystem::remove(path);
}

TEST(AssocRequestFrame, SurplusElementsOfTheListsAreLoggedAndDropped) {
    platform::FakePlatform fake;
    std::string vendors;
    for (int n = 0; n < 11; ++n) {
        vendors += vendor;
    }
    const auto frame = read(fixed + vendors + ttlm + ttlm + ttlm + ht);
    EXPECT_EQ(frame.get_vendor_specific_vector().size(), 10U);
    EXPECT_EQ(frame.get_ttlm_vector().size(), 2U);
    EXPECT_NE(frame.get_optional_element<IEEE802_11_HTCapabilities>(), nullptr)
        << "reading goes on";
    EXPECT_EQ(
        fake.log().texts(),
        (std::vector<std::string>{
            "Number of vendor elements in AssocRequest exceeds limit of 10. Element not added!",
            "Number of TTLM elements in AssocRequest exceeds limit of 2. Element not added!"}));
}

TEST(AssocRequestFrame, HECapabilitiesShapeTheEHTCapabilities) {
    for (std::uint8_t width = 0; width < 16; ++width) {
        const std::size_t he_maps = 4 + (width & 4U) + (width >> 1U & 4U);
        const std::size_t maps =
            (width == 0 ? 4U : 0U) + ((width & 3U) != 0 ? 3U : 0U) + ((width & 4U) != 0 ? 3U : 0U);
        test::Octets octets = test::from_hex(fixed);
        const auto append_zeros = [&](std::uint8_t extension, std::size_t size) {
            octets.insert(octets.end(), {255, static_cast<std::uint8_t>(1 + size), extension});
            octets.resize(octets.size() + size);
        };
        append_zeros(35, 6 + 11 + he_maps);
        octets[octets.size() - he_maps - 11] = static_cast<std::uint8_t>(width << 1U);
        append_zeros(108, 2 + 9 + maps);
        const auto frame = read(test::to_hex(octets));
        const auto* element = frame.get_optional_element<IEEE802_11_EHTCapabilities>();
        ASSERT_NE(element, nullptr);
        EXPECT_EQ(element->get_length(), 14 + maps) << int{width};
        EXPECT_TRUE(element->get_ppe_threshold_field_dummy().empty()) << int{width};
    }
}

TEST(AssocRequestFrame, RereadingReplacesEverything) {
    const auto first = read(fixed + rsn + vendor + ttlm);
    AssocRequestFrame used = read(fixed + ht + vendor + vendor);
    EXPECT_FALSE(used == first);
    EXPECT_TRUE(test::read_as(fixed + rsn + vendor + ttlm, std::move(used)) == first);
}

TEST(AssocRequestFrame, MovedFromHoldsNothing) {
    auto from = read(fixed + rsn + vendor + ttlm);
    const auto to = std::move(from);
    EXPECT_EQ(to.get_vendor_specific_vector().size(), 1U);
    // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): what is left is asked for
    EXPECT_EQ(from.get_optional_elements().get_length(), 0U);
}

TEST(ElementContainer, EveryIdentifierHasItsSlot) {
    const std::vector<unsigned> slots{
        1,  50,  33,  36,  48,  46,  70,  54,       59,  45,       72,       127,       89,
        94, 107, 158, 148, 170, 191, 199, 256 + 35, 244, 256 + 56, 256 + 59, 256 + 107, 256 + 108};
    const auto slot_of = [&](unsigned key) {
        return static_cast<std::size_t>(std::ranges::find(slots, key) - slots.begin());
    };
    for (unsigned n = 0; n < 256; ++n) {
        const ID id{static_cast<std::uint8_t>(n)};
        const Ext extension{static_cast<std::uint8_t>(n)};
        EXPECT_EQ(Container::map_element_id_to_member(id), slot_of(n)) << n;
        EXPECT_EQ(Container::map_extended_element_id_to_member(extension), slot_of(256 + n)) << n;
        if (id != ID::ELEMENT_ID_EXTENSION) {
            EXPECT_EQ(Container::create_element(id)->get_type(), id);
        }
        if (extension != Ext::EHT_CAPABILITIES) {
            EXPECT_EQ(Container().create_extended_element(extension)->get_type(),
                      ID::ELEMENT_ID_EXTENSION);
        }
    }
    EXPECT_EQ(test::message_of([] { Container::create_element(ID::ELEMENT_ID_EXTENSION); }),
              "create_element() cannot handle ELEMENT_ID_EXTENSION!");
}

TEST(ElementContainer, TypedLookUpSeesThroughAForeignClass) {
    AssocRequestFrame frame;
    frame.add_element(std::make_unique<IEEE802_11_DummyElement>(ID::RSN, std::uint16_t{2}));
    EXPECT_NE(frame.get_optional_element_by_id(ID::RSN), nullptr);
    EXPECT_EQ(frame.get_optional_element<IEEE802_11_RSNElement>(), nullptr);
    frame.add_element(std::make_unique<IEEE802_11_RSNElement>());
    EXPECT_NE(frame.get_optional_element<IEEE802_11_RSNElement>(), nullptr);
    EXPECT_EQ(frame.get_optional_element<IEEE802_11_MultiLink>(), nullptr);
    static_assert(std::is_const_v<std::remove_reference_t<decltype(*frame.get_ttlm_vector()[0])>>);
}

}  // namespace
}  // namespace nuv::ieee802_11

// SPDX-License-Identifier: Apache-2.0
// What holds for every element, tried on every sample of the vectors.
#include "tests/support/codec_checks.hpp"
#include "tests/support/foreign_locale.hpp"
#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::test {
namespace {

using ieee802_11::IEEE802_11_MeasurementReport;
using ieee802_11::IEEE802_11_NeighborReport;

constexpr std::size_t header_length = 2;

class ElementBattery : public testing::Test {
protected:
    static Maker<Element> maker(const Sample& sample) {
        const auto id = static_cast<ElementID>(sample.octets.at(0));
        const auto extension = sample.octets.size() > header_length
                                   ? static_cast<ExtensionID>(sample.octets[header_length])
                                   : ExtensionID::NO_EXTENSION;
        return [id, extension, maps = sample.maps] { return make_element(id, extension, maps); };
    }

    static std::unique_ptr<Element> read(const Sample& sample) {
        auto reading = read_from_memory(maker(sample)(), sample.octets);
        EXPECT_EQ(reading.error, "") << sample.name;
        return std::move(reading.object);
    }

    /// The reports can be printed; neither the locale nor the stream's format counts.
    static std::string printed(const Element& element) {
        const ForeignLocale foreign;
        std::ostringstream os;
        os << std::hex << std::showbase << std::setfill('*') << std::setw(999);
        if (const auto* report = dynamic_cast<const IEEE802_11_MeasurementReport*>(&element)) {
            os << *report;
            if (const auto& field = report->get_measurement_report_field()) {
                std::string text = os.str();
                field->serialize_string_impl(os);
                EXPECT_NE(text.find(os.str().substr(text.size()) + " (report)"), std::string::npos);
                os.str(std::move(text));
            }
        } else if (const auto* other = dynamic_cast<const IEEE802_11_NeighborReport*>(&element)) {
            os << *other;
        }
        EXPECT_EQ(os.width(), 999);
        return os.str();
    }

    const std::vector<Sample> samples_ = elements();
};

TEST_F(ElementBattery, HasASampleOfEveryElementThatAFrameKnows) {
    std::set<std::pair<ElementID, ExtensionID>> seen;
    for (const Sample& sample : samples_) {
        const auto element = read(sample);
        seen.emplace(element->get_type(), element->get_extension_type());
    }
    for (unsigned octet = 0; octet < 256; ++octet) {
        const auto id = static_cast<ElementID>(octet);
        const auto extension = static_cast<ExtensionID>(octet);
        for (const auto& ids : {std::pair(id, ExtensionID::NO_EXTENSION),
                                {ElementID::ELEMENT_ID_EXTENSION, extension}}) {
            EXPECT_TRUE(make_element(ids.first, ids.second, 0)->is_dummy() || seen.contains(ids))
                << octet;
        }
    }
}

TEST_F(ElementBattery, EveryWayOfReadingStandsBehindTheElementAndItIsWrittenAsTheVectorsSay) {
    for (const Sample& sample : samples_) {
        SCOPED_TRACE(sample.name);
        Octets octets = sample.octets;
        octets.insert(octets.end(), {0x0A, 0x00});  // another element, whole
        EXPECT_EQ(check_ways_of_reading_agree(maker(sample), octets), "");
        const auto [element, error, state, position] = read_from_memory(maker(sample)(), octets);
        EXPECT_EQ(error, "");
        EXPECT_EQ(state, std::ios_base::goodbit);
        EXPECT_EQ(position, header_length + octets[1]);

        const Written written = write(*element);
        EXPECT_EQ(to_hex(written.octets), to_hex(sample.written));
        EXPECT_EQ(written.error, sample.refused);
        EXPECT_EQ(field_text(*element),
                  sample.fields.empty() ? field_text(*element) : sample.fields);
        EXPECT_EQ(printed(*element), sample.text.empty() ? printed(*element) : sample.text);
        EXPECT_EQ(check_round_trip(maker(sample), *element), "");
    }
}

TEST_F(ElementBattery, EveryProperPrefixIsRefusedUnlessOnlySurplusIsMissing) {
    for (const Sample& sample : samples_) {
        for (std::size_t size = 0; size < sample.octets.size(); ++size) {
            SCOPED_TRACE(sample.name + ", first " + std::to_string(size));
            const Octets prefix(sample.octets.begin(),
                                sample.octets.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_EQ(check_ways_of_reading_agree(maker(sample), prefix), "");
            const auto reading = read_from_memory(maker(sample)(), prefix);
            // On a memory stream the surplus is missed by the fail bit only. A beacon report may end
            // behind each subelement.
            const bool enough = size >= sample.octets.size() - sample.surplus ||
                                (sample.octets[0] == 39 && reading.object->get_length() == size);
            EXPECT_EQ(reading.ok(), enough) << reading.error;
            EXPECT_NE(reading.state & std::ios_base::failbit, 0);
        }
    }
}

TEST_F(ElementBattery, RefusesMalformedElementsWithTheirTextAndPutsFragmentsTogether) {
    std::vector<Sample> samples = vectors("malformed_elements");
    std::ranges::move(vectors("fragmented_multi_link"), std::back_inserter(samples));
    for (Sample& sample : samples) {
        SCOPED_TRACE(sample.name);
        const auto size = static_cast<std::streamoff>(sample.octets.size());
        if (sample.error.empty()) {
            sample.octets.insert(sample.octets.end(), {0x0A, 0x00});  // another element
        }
        EXPECT_EQ(check_ways_of_reading_agree(maker(sample), sample.octets), "");
        const auto reading = read_from_memory(maker(sample)(), sample.octets);
        EXPECT_EQ(reading.error, sample.error);
        if (reading.ok()) {
            EXPECT_EQ(reading.position, size);
            EXPECT_EQ(to_hex(write(*reading.object).octets), to_hex(sample.written));
            EXPECT_EQ(reading.object->get_length(), sample.written.size());
        }
    }
}

TEST_F(ElementBattery, EqualsWhatIsWrittenTheSameAndLeavesNothingWhereAnotherIsReadInto) {
    serialization::SerializationContext ctx;
    for (const Sample& a : samples_) {
        const auto element = read(a);
        for (const Sample& b : samples_) {
            SCOPED_TRACE(a.name + ", " + b.name);
            const auto other = read(b);
            const bool same = a.octets == b.octets || (a.written == b.written && a.refused.empty());
            EXPECT_EQ(*element == *other, same);
            const auto used = read(a);
            if (used->get_type() == other->get_type() && a.maps == b.maps &&
                used->get_extension_type() == other->get_extension_type()) {
                used->deserialize(b.octets, ctx);
                EXPECT_EQ(*used, *other);
            }
        }
    }
}

TEST_F(ElementBattery, EveryLengthOctetIsReadToItsEndOrRefusedWithAKnownText) {
    std::set<std::string> known;
    for (const Sample& sample : vectors("malformed_elements")) {
        known.insert(sample.error);
    }
    std::mt19937 random(20250314);
    for (const Sample& sample : samples_) {
        for (unsigned length = 0; length < 256; ++length) {
            SCOPED_TRACE(sample.name + ", Length " + std::to_string(length));
            Octets octets(header_length + 256);
            std::ranges::generate(octets, [&] { return static_cast<std::uint8_t>(random()); });
            // The sample's own octets lead deeper than random ones.
            std::ranges::copy(sample.octets, octets.begin());
            octets[1] = static_cast<std::uint8_t>(length);
            EXPECT_EQ(check_ways_of_reading_agree(maker(sample), octets), "");
            const auto reading = read_from_memory(maker(sample)(), octets);
            if (reading.ok()) {
                EXPECT_EQ(reading.position, header_length + length);
                EXPECT_EQ(check_round_trip(maker(sample), *reading.object), "");
            } else {
                EXPECT_TRUE(known.contains(reading.error)) << reading.error;
            }
        }
    }
}

TEST(FrameBattery, IsWrittenAsItIsReadAndEveryWayOfReadingAFrameThatEndsEarlyAgrees) {
    const Maker<Frame> make = [] { return std::make_unique<Frame>(); };
    // The replayed corpus of fuzz_assoc_request reads these in every way.
    for (const Sample& sample : vectors("assoc_request_bodies")) {
        const auto reading = read_from_memory(make(), sample.octets);
        EXPECT_EQ(reading.error, sample.error) << sample.name;
        EXPECT_TRUE(!reading.ok() || write(*reading.object).octets == sample.written)
            << sample.name << ": " << to_hex(write(*reading.object).octets);
    }
    for (const Sample& sample : stations()) {
        const auto body = sample.octets.begin() + mac_header_length;
        for (auto end = sample.octets.end(); end != body; --end) {
            SCOPED_TRACE(sample.name + " up to " + std::to_string(end - body));
            EXPECT_EQ(check_ways_of_reading_agree(make, {body, end}), "");
            const auto reading = read_from_memory(make(), Octets(body, end));
            EXPECT_TRUE(!reading.ok() || check_round_trip(*reading.object).empty());
            EXPECT_TRUE(end != sample.octets.end() ||
                        (reading.ok() && reading.state == std::ios_base::eofbit));
        }
    }
}

}  // namespace
}  // namespace nuv::test

// SPDX-License-Identifier: Apache-2.0
// Every value of every enumeration that has texts: output, both directions, validity.
#include <cctype>

#include "nuv/addresses.hpp"
#include "nuv/channels.hpp"
#include "nuv/radio.hpp"
#include "tests/support/failures.hpp"
#include "tests/support/test.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::test {
namespace {

/// A row of the file.
struct Texts {
    explicit Texts(const ListedCase& row) : otherwise(row.expected) {
        std::istringstream is(row.call);
        is >> name >> last_valid >> std::ws;
        int value = 0;
        for (std::string text; std::getline(is, text, '|'); ++value) {
            const std::size_t equals = text.find('=');
            if (equals != std::string::npos) {
                value = std::stoi(text);
                text.erase(0, equals + 1);
            }
            values.emplace(text, value);
            named.emplace(value, text);
        }
    }
    std::string of(int value) const {
        std::string text = named.contains(value) ? named.at(value) : otherwise;
        const std::size_t at = named.contains(value) ? std::string::npos : text.find('#');
        return at == std::string::npos ? text : text.replace(at, 1, std::to_string(value));
    }

    std::string name, last_valid, otherwise;
    std::map<int, std::string> named;
    std::map<std::string, int> values;
};

template <class E>
void check(const Texts& texts) {
    for (int i = 0; i < 256; ++i) {
        SCOPED_TRACE(texts.name + " " + std::to_string(i));
        const auto value = static_cast<E>(i);
        const std::string text = texts.of(i);
        EXPECT_EQ(message_of<std::invalid_argument>(
                      [&] { return (std::ostringstream() << std::hex << value).str(); }),
                  text);
        if constexpr (requires { enum_to_string(value); }) {
            EXPECT_EQ(message_of<std::invalid_argument>([&] { return enum_to_string(value); }),
                      text);
            std::string lower = text;
            std::ranges::transform(lower, lower.begin(),
                                   [](unsigned char c) { return std::tolower(c); });
            for (const std::string& candidate : {text, lower, " " + text, text + " ", text + '\0',
                                                 text.substr(0, text.size() - 1), std::string()}) {
                const auto known = texts.values.find(candidate);
                const bool is_known = known != texts.values.end();
                E out{static_cast<std::uint8_t>(~i)};
                EXPECT_EQ(string_to_enum(candidate, out), is_known) << candidate;
                EXPECT_EQ(int(out), is_known ? known->second : 255 - i) << candidate;
            }
        }
        if constexpr (requires { is_valid(value); }) {
            EXPECT_TRUE(texts.last_valid == "-" ||
                        is_valid(value) == (i <= std::stoi(texts.last_valid)));
        }
    }
}

TEST(EnumTexts, AreReadWrittenAndValidAsListed) {
    std::map<std::string, std::function<void(const Texts&)>> checks{
        {"WLANCapability", check<WLANCapability>},
        {"WLANIfaceState", check<WLANIfaceState>},
        {"WLANSecurity", check<WLANSecurity>},
        {"WLANOpmode", check<WLANOpmode>},
        {"WLANPhymode", check<WLANPhymode>},
        {"MLOMode", check<MLOMode>},
        {"ChannelWidth", check<ChannelWidth>},
        {"ChannelStateBit", check<ChannelStateBit>},
        {"ChannelCapabilityBit", check<ChannelCapabilityBit>},
        {"ChannelConfigBit", check<ChannelConfigBit>},
        {"FrequencyBand", check<FrequencyBand>},
        {"PHYType", check<PHYType>},
        {"WNMAction", check<WNMAction>},
        {"RequestModeBit", check<RequestModeBit>},
        {"BTMStatusCode", check<BTMStatusCode>},
        {"BTMReasonCode", check<BTMReasonCode>},
        {"MeasurementRequestModeBit", check<MeasurementRequestModeBit>},
        {"MeasurementType", check<MeasurementType>},
        {"BeaconMeasurementMode", check<BeaconMeasurementMode>},
        {"BeaconReportFrameType", check<BeaconReportFrameType>},
        {"BSSInformationBit", check<BSSInformationBit>},
        {"IEEE802_11_CapabilityBit", check<IEEE802_11_CapabilityBit>},
        {"ChassisIDSubtype", check<ChassisIDSubtype>},
        {"PortIDSubtype", check<PortIDSubtype>},
        {"IPAddress::Version", check<IPAddress::Version>},
        {"Region", check<OperatingClassDeduction::Region>},
    };
    for (const ListedCase& row : listed_cases("enum_texts.tsv")) {
        const Texts texts(row);
        ASSERT_TRUE(checks.contains(texts.name)) << texts.name;
        EXPECT_EQ(texts.values.size(), texts.named.size()) << texts.name << " has a text twice";
        checks.extract(texts.name).mapped()(texts);
    }
    EXPECT_TRUE(checks.empty()) << checks.begin()->first << " has no row";
}

}  // namespace
}  // namespace nuv::test

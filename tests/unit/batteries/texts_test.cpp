// SPDX-License-Identifier: Apache-2.0
// What all values with a text have in common: reading, stream output, JSON, order, hash.
#include "nuv/addresses.hpp"
#include "nuv/logging/string_to_logmask.hpp"
#include "nuv/serialization.hpp"
#include "tests/support/codecs.hpp"
#include "tests/support/ip_texts.hpp"
#include "tests/support/json_text.hpp"
#include "tests/support/vectors.hpp"

namespace nuv::test {
namespace {

using serialization::UIDType;

template <class T>
T make(TextArgument text) {
    if constexpr (std::is_same_v<T, PrefixedIPAddress>) {
        return T::guess_version_and_parse(text);
    } else {
        return T(text);
    }
}

/// The text of the value that `text` is read as, or the reason against it. What is read is read from
/// its own text, too, in every way; a refused text leaves a value as it was.
template <class T>
std::string read(const std::string& text, [[maybe_unused]] const T& before) {
    try {
        const T made = make<T>(text);
        EXPECT_TRUE(make<T>(made.to_string()) == made);
        if constexpr (requires { sizeof(JSONSerializableType<T>); }) {
            T value = before;
            EXPECT_EQ(from_json("{\"m\":" + to_json(made) + '}', "m", value), "");
            EXPECT_TRUE(value == made);
        }
        if constexpr (requires(T other) { other.parse_string(text); }) {
            T value = before;
            EXPECT_TRUE(value.parse_string(text) && value == made);
        }
        EXPECT_EQ((std::ostringstream() << made).str(), made.to_string());
        return made.to_string();
    } catch (const std::invalid_argument& error) {
        if constexpr (requires(T other) { other.parse_string(text); }) {
            T value = before;
            EXPECT_FALSE(value.parse_string(text));
            EXPECT_TRUE(value == before || (std::is_same_v<T, MACAddress>))
                << "which promises less";
        }
        return error.what();
    }
}

/// Texts with " < " or " = " between them.
template <class T>
void expect_ascending(std::string texts) {
    std::vector<std::pair<int, T>> values;
    for (int rank = 0; !texts.empty();) {
        const std::size_t end = std::min({texts.find(" < "), texts.find(" = "), texts.size()});
        values.emplace_back(rank, make<T>(texts.substr(0, end)));
        EXPECT_EQ(values.back().second.to_string(), texts.substr(0, end));
        rank += texts.substr(end).starts_with(" < ") ? 1 : 0;
        texts.erase(0, end + 3);
    }
    for (const auto& [i, a] : values) {
        for (const auto& [j, b] : values) {
            EXPECT_EQ(a == b, i == j) << a << ' ' << b;
            EXPECT_TRUE((a <=> b) == (i <=> j)) << a << ' ' << b;
            if constexpr (requires(const T& value) { std::hash<T>()(value); }) {
                EXPECT_EQ(std::hash<T>()(a) == std::hash<T>()(b), i == j) << a << ' ' << b;
            }
        }
    }
}

struct Type {
    std::function<std::string(const std::string& text)> read;
    std::function<void(const std::string& texts)> expect_ascending;
};

template <class T>
Type type(const T& before) {
    return {[before](const std::string& text) { return read(text, before); }, expect_ascending<T>};
}

std::string address_of_any_version(const std::string& text) {
    return IPAddress::guess_version_and_parse(text)->to_string();
}

std::string mask_of_text(const std::string& text) {
    return message_of<std::out_of_range>([&] { return logging::string_to_logmask(text); });
}

std::string text_of_unit(const std::string& text) {
    std::istringstream is(text);
    int kind = 0;
    std::uint32_t id = 0;
    is >> kind >> id;
    return uid_to_string(static_cast<UIDType>(kind), id);
}

/// The kind's number stands before the text; what is refused changes nothing.
std::string unit_of_text(const std::string& text) {
    const auto kind = static_cast<UIDType>(std::stoi(text));
    std::uint32_t id = 77;
    const std::string failure =
        message_of([&] { string_to_uid(kind, text.substr(text.find(' ') + 1), id); });
    EXPECT_TRUE(failure.empty() || id == 77) << id;
    return failure.empty() ? std::to_string(id) : failure;
}

std::string identifier_of_octets(const std::string& text) {
    const auto subtype = static_cast<ChassisIDSubtype>(std::stoi(text));
    return ChassisID(subtype, from_hex(text.substr(text.find(' ')))).to_string();
}

std::string device_of_octets(const std::string& hex) {
    const DeviceID before("local=before local=before");
    DeviceID device = before;
    const std::string failure = read_octets(hex, device);
    EXPECT_TRUE(failure.empty() || device == before);
    return failure.empty() ? device.to_string() : failure;
}

template <class T>
void expect_null_refused(const T& before) {
    const char* const null = nullptr;
    EXPECT_THROW(make<T>(null), std::invalid_argument) << before;
    if constexpr (requires(T other) { other.parse_string(null); }) {
        T value = before;
        EXPECT_FALSE(value.parse_string(null));
        EXPECT_EQ(value, before);
    } else if constexpr (std::is_base_of_v<IPAddress, T>) {
        T value = before;
        EXPECT_THROW(value.from_string(null), std::invalid_argument);
        EXPECT_EQ(value, before);
    }
}

TEST(Texts, NullIsRefusedAsAnEmptyText) {
    expect_null_refused(IPv4Address(9));
    expect_null_refused(IPv6Address({9, 9, 9, 9, 9, 9, 9, 9}));
    expect_null_refused(PrefixedIPAddress::guess_version_and_parse("::/1"));
    expect_null_refused(MACAddress({1, 2, 3, 4, 5, 6}));
    expect_null_refused(plc::NID({1, 2, 3, 4, 5, 6, 7}));
    expect_null_refused(ID("before"));
    expect_null_refused(BasicVersion{7});
    expect_null_refused(TarvuAddress("before"));
    expect_null_refused(ChassisID("local=x"));
    expect_null_refused(DeviceID("local=x local=y"));
    EXPECT_EQ(message_of<std::invalid_argument>([] { MACAddress(nullptr); }),
              "'' is no valid MACAddress string");
    EXPECT_THROW(TarvuAddress(nullptr, std::nullopt), std::invalid_argument);
    EXPECT_EQ(IPv4Address(0), IPv4Address::UNSPECIFIED) << "a number, and no null";
}

TEST(Texts, AreReadPrintedAndOrderedAsListed) {
    const std::map<std::string, Type> types{
        {"IPv4Address", type(IPv4Address(0x09090909))},
        {"IPv6Address", type(IPv6Address({9, 9, 9, 9, 9, 9, 9, 9}))},
        {"PrefixedIPAddress", type(make<PrefixedIPAddress>("9.9.9.9/9"))},
        {"MACAddress", type(MACAddress({9, 9, 9, 9, 9, 9}))},
        {"NID", type(plc::NID({9, 9, 9, 9, 9, 9, 9}))},
        {"ID", type(ID("before"))},
        {"BasicVersion", type(BasicVersion{9, 9})},
        {"TarvuAddress", type(TarvuAddress("before"))},
        {"ChassisID", type(ChassisID("local=before"))},
        {"PortID", type(PortID("local=before"))},
        {"DeviceID", type(DeviceID("local=before local=before"))},
        {"IPAddress", {address_of_any_version, {}}},
        {"identifier", {identifier_of_octets, {}}},
        {"LLDPDU", {device_of_octets, {}}},
        {"uid", {text_of_unit, {}}},
        {"UID", {unit_of_text, {}}},
        {"logmask", {mask_of_text, {}}},
        {"unescaped", {serialization::json_string_unescape, {}}},
    };
    for (const auto& [call, expected] : listed_cases("texts.tsv")) {
        SCOPED_TRACE(call);
        const std::size_t blank = call.find(' ');
        const std::string text = call.substr(blank + 1);
        if (call.starts_with("ascending ")) {
            types.at(text).expect_ascending(expected);
            continue;
        }
        std::string result = expected;
        if (const auto at = result.find("{}"); at != std::string::npos) {
            result.replace(at, 2, text);
        }
        const auto& read = types.at(call.substr(0, blank)).read;
        EXPECT_EQ(message_of<std::invalid_argument>([&] { return read(text); }), result);
    }
}

TEST(Texts, OfIPAddressesAreThoseOfTheCLibraryOneEditAway) {
    constexpr std::string_view alphabet = "019afgxX:.+- \t/";
    int texts = 0;
    for (const auto& [call, expected] : listed_cases("texts.tsv")) {
        if (!call.starts_with("IP")) {
            continue;
        }
        const std::string text = call.substr(call.find(' ') + 1);
        for (std::size_t at = 0; at <= text.size(); ++at) {
            std::vector<std::string> edited{std::string(text).erase(at, 1)};
            for (const char c : alphabet) {
                edited.push_back(std::string(text).insert(at, 1, c));
                edited.push_back(std::string(text).replace(at, 1, 1, c));
            }
            for (const std::string& other : edited) {
                ASSERT_EQ(check_ip_text(other), "") << '"' << other << '"';
                ++texts;
            }
        }
    }
    EXPECT_GT(texts, 10000);
}

}  // namespace
}  // namespace nuv::test

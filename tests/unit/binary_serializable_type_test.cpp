// SPDX-License-Identifier: Apache-2.0
#include "nuv/binary_serializable_type.hpp"

#include <list>

#include "nuv/mac_address.hpp"
#include "nuv/nid.hpp"
#include "tests/support/codecs.hpp"

namespace nuv::test {
namespace {

using serialization::BinarySerializableType;

enum class Octet : std::uint8_t { SEVEN = 7 };

/// `value` is written as `hex`, which is read back, without touching the end-of-file behind it; cut
/// short at any place, or without room, each direction fails with its message.
template <class T>
void expect_codec(const T& value, const std::string& hex, const std::string& type) {
    SCOPED_TRACE(type + " " + hex);
    EXPECT_EQ(written(value), hex);
    std::istringstream is(to_string(from_hex(hex)));
    SerializationContext ctx;
    T read{};
    BinarySerializableType<T>::deserialize(is, ctx, read);
    EXPECT_TRUE(read == value && is.good());
    for (std::size_t size = 0; 3 * size < hex.size(); ++size) {
        EXPECT_EQ(read_octets(hex.substr(0, 3 * size), read),
                  "Deserialization of type " + type + " failed.");
        EXPECT_EQ(written(value, size), "Serialization of type " + type + " failed.");
    }
}

TEST(BinaryCodec, ValuesLieOnTheWireAsListed) {
    expect_codec('A', "41", "char");
    expect_codec(std::int8_t{-2}, "fe", "std::int8_t");
    expect_codec(std::uint8_t{0x80}, "80", "std::uint8_t");
    expect_codec(true, "01", "std::uint8_t");
    expect_codec(Octet::SEVEN, "07", "std::uint8_t");
    // most significant octet first
    expect_codec(std::uint16_t{0x1234}, "12 34", "std::uint16_t");
    expect_codec(std::uint32_t{0x12345678}, "12 34 56 78", "std::uint32_t");
    expect_codec(std::uint64_t{1}, "00 00 00 00 00 00 00 01", "std::uint64_t");
    expect_codec(std::int64_t{-2}, "ff ff ff ff ff ff ff fe", "std::int64_t");
    expect_codec(1ULL << 63U, "80 00 00 00 00 00 00 00", "std::uint64_t");
    expect_codec(-1LL, "ff ff ff ff ff ff ff ff", "std::int64_t");
    // least significant octet first
    expect_codec(std::bitset<16>(0x0001), "01 00", "std::uint8_t");
    expect_codec(std::bitset<16>(0x8000), "00 80", "std::uint8_t");
    expect_codec(std::bitset<24>(0x030201), "01 02 03", "std::uint8_t");
    expect_codec(std::bitset<72>(0xA5) << 64, "00 00 00 00 00 00 00 00 a5", "std::uint8_t");
    expect_codec(
        (std::bitset<128>(0x8000000000000001) << 64) | std::bitset<128>(0x0102030405060708),
        "08 07 06 05 04 03 02 01 01 00 00 00 00 00 00 80", "std::uint8_t");
    // octets in order
    expect_codec(std::array<std::uint8_t, 3>{1, 2, 3}, "01 02 03", "std::uint8_t");
    expect_codec(MACAddress("00:1A:2B:3C:4D:5E"), "00 1a 2b 3c 4d 5e", "std::uint8_t");
    expect_codec(plc::NID({1, 2, 3, 4, 5, 6, 7}), "01 02 03 04 05 06 07", "std::uint8_t");
}

TEST(BinaryCodec, ListsAndStringsAreWrittenWithoutCount) {
    EXPECT_EQ(written(std::string("a\0b", 3)), "61 00 62");
    EXPECT_EQ(written(std::vector<Octet>{Octet::SEVEN, Octet{9}}), "07 09");
    EXPECT_EQ(written(std::vector<std::uint8_t>{1, 2}), "01 02");
    EXPECT_EQ(written(std::list<std::uint16_t>{1, 2}), "00 01 00 02");
    EXPECT_EQ(written(std::vector<std::array<std::uint8_t, 2>>{{1, 2}, {3, 4}}), "01 02 03 04");
    EXPECT_EQ(written(std::string("abc"), 2), "Serialization of type std::uint8_t failed.");
}

TEST(BinaryCodec, StringStreamsAreWrittenWholeOrFail) {
    const std::string failure = "Serialization of type std::stringstream failed.";
    std::stringstream stream("abc");
    stream.get();
    stream.seekp(0, std::ios::end) << 'd';
    EXPECT_EQ(written(stream), "62 63 64");
    EXPECT_EQ(written(stream), "") << "nothing left is no failure";
    for (std::size_t room = 0; room < 20000; room += 4096) {
        stream.str(std::string(20000, 'x'));
        EXPECT_EQ(written(stream, room), failure);
        EXPECT_EQ(stream.tellg(), room) << "consumed is what was written";
    }
    EXPECT_EQ(written(std::stringstream("abc", std::ios::out)), "");
}

TEST(BinaryCodec, StringsAndStringStreamsCannotBeRead) {
    std::istringstream is("abc");
    SerializationContext ctx;
    std::string text;
    std::stringstream stream;
    EXPECT_EQ(message_of([&] { BinarySerializableType<std::string>::deserialize(is, ctx, text); }),
              "Raw deserialization of std::string not supported!");
    EXPECT_EQ(message_of(
                  [&] { BinarySerializableType<std::stringstream>::deserialize(is, ctx, stream); }),
              "Deserialization of type std::stringstream not supported!");
    EXPECT_EQ(is.tellg(), 0) << "they throw without reading";
}

TEST(BinaryCodec, BoolsAreTrueButForZeroAndShortReadsApplyTheOctetsOfSetsAndAddresses) {
    bool truth = false;
    EXPECT_EQ(read_octets("02", truth), "");
    EXPECT_TRUE(truth);
    EXPECT_EQ(read_octets("00", truth), "");
    EXPECT_FALSE(truth);
    std::uint32_t number = 0xAABBCCDD;
    EXPECT_NE(read_octets("01 02", number), "");
    EXPECT_EQ(number, 0xAABBCCDDU);
    std::bitset<24> bits(0xFFFFFF);
    EXPECT_NE(read_octets("01 02", bits), "");
    EXPECT_EQ(bits, std::bitset<24>(0xFF0201));
    MACAddress address;
    EXPECT_NE(read_octets("11 22", address), "");
    EXPECT_EQ(address.to_string(), "11:22:00:00:00:00");
}

TEST(BinaryCodec, FailureIsTheFailBitNotEndOfFileAndThrownInOneWay) {
    SerializationContext ctx;
    using Number = BinarySerializableType<std::uint16_t>;
    constexpr auto failures = std::ios::badbit | std::ios::failbit;
    for (const auto mask : {std::ios::goodbit, std::ios::eofbit, failures}) {
        const auto write = [&](FullBuffer& buffer, std::ios::iostate state) {
            std::ostream os(&buffer);
            os.clear(state);
            message_of<std::ios::failure>([&] { os.exceptions(mask); });
            const std::string message = message_of([&] { Number::serialize(os, ctx, 0x6162); });
            EXPECT_EQ(os.exceptions(), mask);
            EXPECT_EQ(os.rdstate() & ~std::ios::badbit, state);
            EXPECT_EQ(os.fail(), !message.empty());
            return message + buffer.text;
        };
        const std::string failure = "Serialization of type std::uint16_t failed.";
        FullBuffer full(3), broken(1, true), untouched(3);
        EXPECT_EQ(write(full, std::ios::eofbit), "ab");
        EXPECT_EQ(write(full, std::ios::eofbit), failure + "aba");
        EXPECT_EQ(write(broken, std::ios::goodbit), failure + "a");
        EXPECT_EQ(write(untouched, std::ios::failbit), failure);

        std::istringstream is("\x01\x02");
        is.exceptions(mask);
        std::bitset<24> bits(0xFFFFFF);
        EXPECT_EQ(message_of(
                      [&] { BinarySerializableType<std::bitset<24>>::deserialize(is, ctx, bits); }),
                  "Deserialization of type std::uint8_t failed.");
        EXPECT_EQ(bits, std::bitset<24>(0xFF0201));
        EXPECT_EQ(is.rdstate(), std::ios::failbit | std::ios::eofbit);
        EXPECT_EQ(is.exceptions(), mask);
    }
}

template <class T>
concept HasCodec = requires {
    sizeof(BinarySerializableType<T>);
};
static_assert(!HasCodec<std::int16_t> && !HasCodec<std::int32_t> && !HasCodec<std::bitset<7>>);
static_assert(HasCodec<long long> && HasCodec<unsigned long> && HasCodec<unsigned long long>);

}  // namespace
}  // namespace nuv::test

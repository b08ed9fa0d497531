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
    std::stringstream stream("abc");
    stream.get();
    EXPECT_EQ(written(stream), "62 63");
    EXPECT_EQ(written(stream), "") << "nothing left is no failure";
    stream.str("xyz");
    EXPECT_EQ(written(stream, 0), "Serialization of type std::stringstream failed.");
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

TEST(BinaryCodec, FailureIsTheFailBitNotEndOfFile) {
    SerializationContext ctx;
    std::ostringstream os;
    os.setstate(std::ios_base::failbit);
    EXPECT_EQ(message_of([&] { BinarySerializableType<std::uint8_t>::serialize(os, ctx, 1); }),
              "Serialization of type std::uint8_t failed.");
    os.clear(std::ios_base::eofbit);
    EXPECT_NO_THROW(BinarySerializableType<std::uint8_t>::serialize(os, ctx, 1));
}

template <class T>
concept HasCodec = requires {
    sizeof(BinarySerializableType<T>);
};
static_assert(!HasCodec<std::int16_t> && !HasCodec<std::int32_t> && !HasCodec<std::bitset<7>>);
static_assert(HasCodec<long long> && HasCodec<unsigned long> && HasCodec<unsigned long long>);

}  // namespace
}  // namespace nuv::test

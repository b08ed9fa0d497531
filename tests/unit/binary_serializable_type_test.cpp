// SPDX-License-Identifier: Apache-2.0
#include "nuv/binary_serializable_type.hpp"

#include <gtest/gtest.h>

#include <istream>
#include <list>
#include <streambuf>

#include "support/codecs.hpp"

namespace nuv::serialization {
namespace {

using test::from_hex;
using test::message_of;
using test::written;

enum class Octet : std::uint8_t { SEVEN = 7 };

/// Takes `room` characters, then fails.
class FullBuffer : public std::streambuf {
public:
    explicit FullBuffer(std::size_t room) : room_(room) {}

protected:
    int_type overflow(int_type c) override {
        if (room_ == 0) {
            return traits_type::eof();
        }
        --room_;
        return c;
    }

private:
    std::size_t room_;
};

template <class T>
void write_to_full_stream(const T& value, std::size_t room) {
    FullBuffer buffer(room);
    std::ostream os(&buffer);
    SerializationContext ctx;
    BinarySerializableType<T>::serialize(os, ctx, value);
}

template <class T>
T read_back(const std::string& bytes, T value = {}) {
    std::istringstream is(bytes);
    SerializationContext ctx;
    BinarySerializableType<T>::deserialize(is, ctx, value);
    EXPECT_TRUE(is.good()) << "reading the very last octet is no end-of-file";
    return value;
}

/// `value` is written as `hex`, which is read back; cut short at any place, or without room, each
/// direction fails with its message.
template <class T>
void expect_codec(const T& value, std::string_view hex, const std::string& type) {
    SCOPED_TRACE(type + " " + std::string(hex));
    EXPECT_EQ(written(value), hex);
    const std::string bytes = test::to_string(from_hex(hex));
    EXPECT_TRUE(read_back<T>(bytes) == value);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_EQ(message_of([&] { read_back<T>(bytes.substr(0, size)); }),
                  "Deserialization of type " + type + " failed.");
        EXPECT_EQ(message_of([&] { write_to_full_stream(value, size); }),
                  "Serialization of type " + type + " failed.");
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
    expect_codec(std::array<std::uint8_t, 3>{1, 2, 3}, "01 02 03", "std::uint8_t");
}

TEST(BinaryCodec, BoolReadsEveryOctetButZeroAsTrue) {
    EXPECT_TRUE(read_back<bool>("\x02"));
    EXPECT_FALSE(read_back<bool>(std::string(1, '\0')));
}

TEST(BinaryCodec, ListsAndStringsAreWrittenWithoutCount) {
    EXPECT_EQ(written(std::string("a\0b", 3)), "61 00 62");
    EXPECT_EQ(written(std::vector<Octet>{Octet::SEVEN, Octet{9}}), "07 09");
    EXPECT_EQ(written(std::vector<std::uint8_t>{1, 2}), "01 02");
    EXPECT_EQ(written(std::list<std::uint16_t>{1, 2}), "00 01 00 02");
    EXPECT_EQ(written(std::vector<std::array<std::uint8_t, 2>>{{1, 2}, {3, 4}}), "01 02 03 04");
    EXPECT_EQ(message_of([] { write_to_full_stream(std::string("abc"), 2); }),
              "Serialization of type std::uint8_t failed.");
}

TEST(BinaryCodec, StringStreamsAreWrittenFromWhereTheyStand) {
    std::stringstream value("abc");
    value.get();
    EXPECT_EQ(written(value), "62 63");
    EXPECT_EQ(written(value), "") << "nothing left is no failure";
    value.str("xyz");
    EXPECT_EQ(message_of([&] { write_to_full_stream(value, 0); }),
              "Serialization of type std::stringstream failed.");
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

TEST(BinaryCodec, ShortReadLeavesAnIntegerAndAPartOfASet) {
    SerializationContext ctx;
    std::istringstream is("\x01\x02");
    std::uint32_t number = 0xAABBCCDD;
    EXPECT_THROW(BinarySerializableType<std::uint32_t>::deserialize(is, ctx, number),
                 SerializationException);
    EXPECT_EQ(number, 0xAABBCCDDU);

    is.clear();
    is.seekg(0);
    std::bitset<24> bits(0xFFFFFF);
    EXPECT_THROW(BinarySerializableType<std::bitset<24>>::deserialize(is, ctx, bits),
                 SerializationException);
    EXPECT_EQ(bits, std::bitset<24>(0xFF0201));
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
}  // namespace nuv::serialization

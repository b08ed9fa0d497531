// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <bitset>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iosfwd>
#include <ranges>
#include <sstream>
#include <string>
#include <type_traits>

#include "nuv/binary_serializable.hpp"
#include "nuv/export.hpp"
#include "nuv/serialization_context.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuv::impl {

using serialization::BinarySerializable;
using serialization::SerializationContext;

/// Writes `size` octets in one stream-buffer operation. Throws SerializationException(`failure`) if
/// the stream then has its bad or fail bit set; end-of-file alone is no failure and does not keep it
/// from writing. What the stream is set to throw is not thrown, here and below.
NUV_EXPORT void write_octets(std::ostream& os, const std::uint8_t* octets, std::size_t size,
                             const char* failure);

/// Reads up to `size` octets in one stream-buffer operation and returns how many came. The stream's
/// state ends as an unformatted read leaves it.
NUV_EXPORT std::size_t read_available(std::istream& is, std::uint8_t* octets, std::size_t size);

/// Throws SerializationException(`failure`) if `is` has its bad or fail bit set.
NUV_EXPORT void check_read(const std::istream& is, const char* failure);

/// The texts of a codec's two failures.
struct CodecTexts {
    const char* serialize;
    const char* deserialize;
};

inline constexpr CodecTexts octet_texts{"Serialization of type std::uint8_t failed.",
                                        "Deserialization of type std::uint8_t failed."};

template <class T>
consteval CodecTexts integer_texts() {
    if constexpr (std::same_as<T, char>) {
        return {"Serialization of type char failed.", "Deserialization of type char failed."};
    } else if constexpr (std::signed_integral<T> && sizeof(T) == 1) {
        return {"Serialization of type std::int8_t failed.",
                "Deserialization of type std::int8_t failed."};
    } else if constexpr (sizeof(T) == 1) {
        return octet_texts;
    } else if constexpr (sizeof(T) == 2) {
        return {"Serialization of type std::uint16_t failed.",
                "Deserialization of type std::uint16_t failed."};
    } else if constexpr (sizeof(T) == 4) {
        return {"Serialization of type std::uint32_t failed.",
                "Deserialization of type std::uint32_t failed."};
    } else if constexpr (std::signed_integral<T>) {
        return {"Serialization of type std::int64_t failed.",
                "Deserialization of type std::int64_t failed."};
    } else {
        return {"Serialization of type std::uint64_t failed.",
                "Deserialization of type std::uint64_t failed."};
    }
}

/// The integers that have a wire form: every width unsigned, and 8 and 64 bits signed. Chosen by
/// size and signedness, so that `long` and `long long` work alike on every machine.
template <class T>
concept WireInteger =
    std::integral<T> && !std::same_as<T, bool> && !std::same_as<T, wchar_t> &&
    !std::same_as<T, char8_t> && !std::same_as<T, char16_t> && !std::same_as<T, char32_t> &&
    (std::unsigned_integral<T> || sizeof(T) == 1 || sizeof(T) == 8);

/// How a value of fixed size lies on the wire. A specialisation has
///  - `size`, octets;
///  - `texts`, the messages of its failures;
///  - `encode(value, octets)`, which writes `size` octets;
///  - `decode(octets, count, value)`, which is given the `count` <= `size` octets that could be
///    read and assigns what follows from them: all of the value, or a part, or nothing.
template <class T>
struct WireForm;

/// Integers: most significant octet first, also inside IEEE 802.11 elements (deliberate: both ends
/// of this library's binary forms agree on it). A short read leaves the target unchanged.
template <WireInteger T>
struct WireForm<T> {
    static constexpr std::size_t size = sizeof(T);
    static constexpr CodecTexts texts = integer_texts<T>();

    static void encode(T value, std::uint8_t* octets) {
        auto bits = static_cast<std::make_unsigned_t<T>>(value);
        for (std::size_t k = size; k-- > 0;) {
            octets[k] = static_cast<std::uint8_t>(bits);
            if constexpr (size > 1) {
                bits = static_cast<std::make_unsigned_t<T>>(bits >> 8U);
            }
        }
    }

    static void decode(const std::uint8_t* octets, std::size_t count, T& value) {
        if (count != size) {
            return;
        }
        std::uint64_t bits = 0;
        for (std::size_t k = 0; k < size; ++k) {
            bits = bits << 8U | octets[k];
        }
        value = static_cast<T>(bits);
    }
};

/// bool: one octet, written 0 or 1, read as true for every other value than 0.
template <>
struct WireForm<bool> {
    static constexpr std::size_t size = 1;
    static constexpr CodecTexts texts = octet_texts;

    static void encode(bool value, std::uint8_t* octets) { octets[0] = value ? 1 : 0; }
    static void decode(const std::uint8_t* octets, std::size_t count, bool& value) {
        if (count == size) {
            value = octets[0] != 0;
        }
    }
};

/// Enumerations over one octet: their number.
template <class T>
requires(std::is_enum_v<T> && sizeof(T) == 1) struct WireForm<T> {
    static constexpr std::size_t size = 1;
    static constexpr CodecTexts texts = octet_texts;

    static void encode(T value, std::uint8_t* octets) {
        octets[0] = static_cast<std::uint8_t>(value);
    }
    static void decode(const std::uint8_t* octets, std::size_t count, T& value) {
        if (count == size) {
            value = static_cast<T>(octets[0]);
        }
    }
};

/// Fixed arrays of octets: in order. A short read leaves the octets read before it applied.
template <std::size_t N>
struct WireForm<std::array<std::uint8_t, N>> {
    static constexpr std::size_t size = N;
    static constexpr CodecTexts texts = octet_texts;

    static void encode(const std::array<std::uint8_t, N>& value, std::uint8_t* octets) {
        std::memcpy(octets, value.data(), N);
    }
    static void decode(const std::uint8_t* octets, std::size_t count,
                       std::array<std::uint8_t, N>& value) {
        std::memcpy(value.data(), octets, count);
    }
};

/// Values made of nothing but octets, T::Octets: as that array.
template <class T>
requires requires(const T& value) { T(typename T::Octets(value.octets())); }
struct WireForm<T> {
    using Array = WireForm<typename T::Octets>;
    static constexpr std::size_t size = Array::size;
    static constexpr CodecTexts texts = Array::texts;

    static void encode(const T& value, std::uint8_t* octets) {
        Array::encode(value.octets(), octets);
    }
    static void decode(const std::uint8_t* octets, std::size_t count, T& value) {
        typename T::Octets array = value.octets();
        Array::decode(octets, count, array);
        value = T(array);
    }
};

/// Bit sets: octet k carries bits 8k to 8k+7, bit 8k in its least significant bit. A short read
/// leaves the octets read before it applied and the rest of the set as it was.
template <std::size_t N>
requires(N % 8 == 0) struct WireForm<std::bitset<N>> {
    static constexpr std::size_t size = N / 8;
    static constexpr CodecTexts texts = octet_texts;

    static void encode(const std::bitset<N>& value, std::uint8_t* octets) {
        for (std::size_t at = 0; at < size; at += 8) {
            const std::uint64_t word = ((value >> (8 * at)) & low_word()).to_ullong();
            for (std::size_t k = at; k < size && k < at + 8; ++k) {
                octets[k] = static_cast<std::uint8_t>(word >> (8 * (k - at)));
            }
        }
    }

    static void decode(const std::uint8_t* octets, std::size_t count, std::bitset<N>& value) {
        std::bitset<N> bits;
        for (std::size_t at = 0; at < count; at += 8) {
            std::uint64_t word = 0;
            for (std::size_t k = at; k < count && k < at + 8; ++k) {
                word |= static_cast<std::uint64_t>(octets[k]) << (8 * (k - at));
            }
            bits |= std::bitset<N>(word) << (8 * at);
        }
        value = count == size ? bits : (value >> (8 * count) << (8 * count)) | bits;
    }

private:
    static std::bitset<N> low_word() { return std::bitset<N>(~std::uint64_t{0}); }
};

template <class T>
concept HasWireForm = requires {
    WireForm<T>::size;
};

template <class T>
concept ListOfSerializable =
    std::ranges::sized_range<T> && !HasWireForm<T> && !std::derived_from<T, BinarySerializable>;

}  // namespace nuv::impl

namespace nuv::serialization {

/// The binary codec of a value type: `serialize(os, ctx, value)` and `deserialize(is, ctx, value)`.
/// Both throw SerializationException if the stream fails, also a stream that is set to throw
/// (std::ios::exceptions()). Every codec of a value of fixed size is one stream-buffer operation on
/// the whole value.
template <class T, class Enable = void>
struct BinarySerializableType;

template <impl::HasWireForm T>
struct BinarySerializableType<T> {
    using Wire = impl::WireForm<T>;

    static void serialize(std::ostream& os, SerializationContext& /*ctx*/, const T& value) {
        std::array<std::uint8_t, Wire::size> octets{};
        Wire::encode(value, octets.data());
        impl::write_octets(os, octets.data(), octets.size(), Wire::texts.serialize);
    }

    static void deserialize(std::istream& is, SerializationContext& /*ctx*/, T& value) {
        std::array<std::uint8_t, Wire::size> octets{};
        Wire::decode(octets.data(), impl::read_available(is, octets.data(), octets.size()), value);
        impl::check_read(is, Wire::texts.deserialize);
    }
};

template <std::derived_from<BinarySerializable> T>
struct BinarySerializableType<T> {
    static void serialize(std::ostream& os, SerializationContext& ctx, const T& value) {
        value.serialize_impl(os, ctx);
    }
    static void deserialize(std::istream& is, SerializationContext& ctx, T& value) {
        value.deserialize_impl(is, ctx);
    }
};

/// Lists: the elements one after another, no count. There is no generic way back: the owner of a
/// list knows how many elements to read.
template <impl::ListOfSerializable T>
struct BinarySerializableType<T> {
    static void serialize(std::ostream& os, SerializationContext& ctx, const T& list) {
        using Element = std::ranges::range_value_t<T>;
        if constexpr (std::same_as<Element, std::uint8_t> && std::ranges::contiguous_range<T>) {
            if (!std::ranges::empty(list)) {
                impl::write_octets(os, std::ranges::data(list), std::ranges::size(list),
                                   impl::octet_texts.serialize);
            }
        } else {
            for (const auto& element : list) {
                BinarySerializableType<Element>::serialize(os, ctx, element);
            }
        }
    }
};

/// Strings: their bytes, no length and no terminator. Reading one throws: nothing says how long it
/// is (see sized_string.hpp for strings that can be read back).
template <>
struct BinarySerializableType<std::string> {
    NUV_EXPORT static void serialize(std::ostream& os, SerializationContext& ctx,
                                     const std::string& value);
    [[noreturn]] NUV_EXPORT static void deserialize(std::istream& is, SerializationContext& ctx,
                                                    std::string& value);
};

/// String streams: what is left to read in the stream's buffer, in one operation; as much of it as
/// could be written is consumed. Nothing left writes nothing. Reading one throws.
template <>
struct BinarySerializableType<std::stringstream> {
    NUV_EXPORT static void serialize(std::ostream& os, SerializationContext& ctx,
                                     const std::stringstream& value);
    [[noreturn]] NUV_EXPORT static void deserialize(std::istream& is, SerializationContext& ctx,
                                                    std::stringstream& value);
};

}  // namespace nuv::serialization

// SPDX-License-Identifier: Apache-2.0
#include "nuv/sized_string.hpp"

#include <utility>

#include "nuv/binary_serializable_type.hpp"

namespace nuv::serialization {

namespace {

constexpr impl::CodecTexts char_texts = impl::WireForm<char>::texts;

SerializationException size_error(const std::string& size, std::uint8_t min, std::uint8_t max) {
    return SerializationException("Size " + size + " is not in the range [" + std::to_string(min) +
                                  ", " + std::to_string(max) + "]");
}

}  // namespace

void serialize_string_with_uint8_size(std::ostream& os, SerializationContext& ctx,
                                      const std::string& s, std::uint8_t min, std::uint8_t max) {
    if (s.size() < min || s.size() > max) {
        throw size_error(std::to_string(s.size()), min, max);
    }
    BinarySerializableType<std::uint8_t>::serialize(os, ctx, static_cast<std::uint8_t>(s.size()));
    impl::write_octets(os, reinterpret_cast<const std::uint8_t*>(s.data()), s.size(),
                       char_texts.serialize);
}

void deserialize_string_with_uint8_size(std::istream& is, SerializationContext& ctx,
                                        std::string& out, std::uint8_t min, std::uint8_t max) {
    std::uint8_t size = 0;
    BinarySerializableType<std::uint8_t>::deserialize(is, ctx, size);
    if (size < min || size > max) {
        // Deliberate: the octet stands in the message as a character, as readers of these messages
        // know it; the writing side prints a number.
        throw size_error(std::string(1, static_cast<char>(size)), min, max);
    }
    std::string fresh(size, '\0');
    impl::read_available(is, reinterpret_cast<std::uint8_t*>(fresh.data()), fresh.size());
    impl::check_read(is, char_texts.deserialize);
    out = std::move(fresh);
}

}  // namespace nuv::serialization

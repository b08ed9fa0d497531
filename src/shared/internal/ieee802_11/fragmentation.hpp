// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <ostream>
#include <string_view>
#include <vector>

#include "internal/byte_cursor.hpp"
#include "internal/ieee802_11/element_body.hpp"
#include "nuv/binary_serializable_type.hpp"

/// Element fragmentation (IEEE Std 802.11-2020, 10.28.11 and 10.28.12): content that one element
/// cannot hold goes on in fragments behind it, each with an ID, a Length and at most 255 octets.
/// Every piece but the last is full. Subelements do likewise with an ID of their own.
namespace nuv::impl {

constexpr std::uint8_t element_fragment_id = 242;
constexpr std::uint8_t subelement_fragment_id = 254;
/// What any frame holds at most (IEEE Std 802.11-2020, table 9-25).
constexpr std::size_t longest_frame = 11454;

/// Octets of `content` octets with the headers of all pieces.
constexpr std::uint32_t fragmented_length(std::uint32_t content) {
    constexpr std::uint32_t header = 2;
    const std::uint32_t pieces = content == 0 ? 1 : (content + max_content - 1) / max_content;
    return content + header * pieces;
}

struct Reassembled {
    std::vector<std::uint8_t> octets;
    std::size_t missing = 0;  // octets that the last piece promises and the source does not have
};

inline int next_octet(const ByteCursor& source) { return source.next(); }
inline int next_octet(std::istream& source) {
    return source.good() ? source.rdbuf()->sgetc() : std::istream::traits_type::eof();
}

/// Reads the content of an element whose header, just read, says 255 octets, and of the fragments
/// behind it. Throws SerializationException "Invalid length" for more than any frame holds.
template <class Source>
Reassembled reassemble(Source& source, serialization::SerializationContext& ctx,
                       std::uint8_t fragment_id) {
    Reassembled content;
    std::uint8_t length = max_content;
    for (;;) {
        {
            auto piece = body_of(source, length);
            const auto there = piece.cursor().read_octets(length);
            content.octets.insert(content.octets.end(), there.begin(), there.end());
            content.missing = length - there.size();
        }
        if (length < max_content || content.missing != 0 || next_octet(source) != fragment_id) {
            return content;
        }
        if (content.octets.size() > longest_frame) {
            throw serialization::SerializationException("Invalid length");
        }
        std::uint8_t id = 0;
        read_value(source, ctx, id);
        read_value(source, ctx, length);
    }
}

/// Writes `content`, more than one piece of it.
inline void write_fragmented(std::ostream& os, serialization::SerializationContext& ctx,
                             std::string_view content, std::uint8_t id, std::uint8_t fragment_id) {
    using Octet = serialization::BinarySerializableType<std::uint8_t>;
    for (; !content.empty(); id = fragment_id) {
        const std::string_view piece = content.substr(0, max_content);
        content.remove_prefix(piece.size());
        Octet::serialize(os, ctx, id);
        Octet::serialize(os, ctx, static_cast<std::uint8_t>(piece.size()));
        write_octets(os, reinterpret_cast<const std::uint8_t*>(piece.data()), piece.size(),
                     octet_texts.serialize);
    }
}

}  // namespace nuv::impl

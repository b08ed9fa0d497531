// SPDX-License-Identifier: Apache-2.0
#include "frames/link_layer.hpp"

#include <pcap/dlt.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "frames/octets.hpp"
#include "nuv/byte_order.hpp"

namespace nuvctl {

namespace {

/// What stands before the frame.
struct LinkHeader {
    std::size_t length = 0;
    bool has_fcs = false;
    bool bad_fcs = false;
};

std::optional<std::uint32_t> big_endian_32(Octets octets, std::size_t at) {
    const auto value = little_endian(octets, at, 4);
    return value ? std::optional(nuv::swap_octets(*value)) : std::nullopt;
}

// --- radiotap: version (1 octet), pad (1), length (2), words of 32 presence bits, the fields that
// they announce in bit order, each aligned from the header's start to a multiple of its alignment.
// Numbers are little-endian.

struct RadiotapField {
    std::uint8_t alignment;
    std::uint8_t size;
};

/// Bits 0 to 27.
constexpr std::array<RadiotapField, 28> radiotap_fields{{
    {8, 8},   // TSFT
    {1, 1},   // Flags
    {1, 1},   // Rate
    {2, 4},   // Channel
    {2, 2},   // FHSS
    {1, 1},   // Antenna signal, dBm
    {1, 1},   // Antenna noise, dBm
    {2, 2},   // Lock quality
    {2, 2},   // TX attenuation
    {2, 2},   // TX attenuation, dB
    {1, 1},   // TX power, dBm
    {1, 1},   // Antenna
    {1, 1},   // Antenna signal, dB
    {1, 1},   // Antenna noise, dB
    {2, 2},   // RX flags
    {2, 2},   // TX flags
    {1, 1},   // RTS retries
    {1, 1},   // Data retries
    {4, 8},   // XChannel
    {1, 3},   // MCS
    {4, 8},   // A-MPDU status
    {2, 12},  // VHT
    {8, 12},  // Timestamp
    {2, 12},  // HE
    {2, 12},  // HE-MU
    {2, 6},   // HE-MU other user
    {1, 1},   // 0-length PSDU
    {2, 4},   // L-SIG
}};
constexpr unsigned radiotap_flags = 1;
// In every word of any namespace: the fields of the next word count from bit 0 again, they are a
// vendor's, there is a next word.
constexpr unsigned radiotap_namespace = 29;
constexpr unsigned vendor_namespace = 30;
constexpr unsigned another_word = 31;

constexpr std::uint8_t flag_fcs_at_end = 0x10;
constexpr std::uint8_t flag_bad_fcs = 0x40;

constexpr bool has_bit(std::uint32_t word, unsigned bit) { return (word >> bit & 1U) != 0; }

constexpr std::size_t aligned(std::size_t at, std::size_t alignment) {
    return (at + alignment - 1) / alignment * alignment;
}

/// The first Flags field of a radiotap header; 0 where there is none, and where a field before it
/// is of unknown size.
std::uint8_t find_radiotap_flags(Octets header) {
    constexpr std::size_t first_word = 4;
    std::size_t field = first_word;
    for (bool more = true; more; field += 4) {
        const auto word = little_endian(header, field, 4);
        if (!word) {
            return 0;
        }
        more = has_bit(*word, another_word);
    }

    bool vendor = false;  // what a vendor's bits announce was skipped in one piece
    bool continued = false;
    for (std::size_t at = first_word;; at += 4) {
        const std::uint32_t word = *little_endian(header, at, 4);
        for (unsigned bit = 0; bit < radiotap_namespace && !vendor; ++bit) {
            if (!has_bit(word, bit)) {
                continue;
            }
            if (bit >= radiotap_fields.size() || continued) {
                return 0;
            }
            field = aligned(field, radiotap_fields[bit].alignment);
            if (bit == radiotap_flags) {
                return static_cast<std::uint8_t>(little_endian(header, field, 1).value_or(0));
            }
            field += radiotap_fields[bit].size;
        }
        if (has_bit(word, vendor_namespace)) {
            // OUI (3 octets), sub-namespace (1), octets to skip behind these (2)
            field = aligned(field, 2);
            const auto skip = little_endian(header, field + 4, 2);
            if (!skip) {
                return 0;
            }
            field += 6 + *skip;
            vendor = true;
        } else if (has_bit(word, radiotap_namespace)) {
            vendor = false;
            continued = false;
        } else {
            continued = true;
        }
        if (!has_bit(word, another_word)) {
            return 0;
        }
    }
}

std::optional<LinkHeader> radiotap_header(Octets octets) {
    const auto length = little_endian(octets, 2, 2);
    constexpr std::size_t least = 8;
    if (!length || octets[0] != 0 || *length < least || *length > octets.size()) {
        return std::nullopt;
    }
    const std::uint8_t flags = find_radiotap_flags(octets.first(*length));
    return LinkHeader{*length, (flags & flag_fcs_at_end) != 0, (flags & flag_bad_fcs) != 0};
}

// --- AVS: version and length (4 octets each), big-endian, what the receiver measured.

constexpr bool is_avs(std::uint32_t version) {
    constexpr std::uint32_t avs_magic = 0x80211000;
    constexpr std::uint32_t avs_version_mask = 0xFFF;
    return (version & ~avs_version_mask) == avs_magic;
}

std::optional<LinkHeader> avs_header(Octets octets) {
    const auto version = big_endian_32(octets, 0);
    const auto length = big_endian_32(octets, 4);
    if (!length || !is_avs(*version) || *length < 8 || *length > octets.size()) {
        return std::nullopt;
    }
    return LinkHeader{*length};
}

// --- Prism: a header of one size. The AVS header came later under the same link type.

std::optional<LinkHeader> prism_header(Octets octets) {
    constexpr std::size_t prism_length = 144;
    if (is_avs(big_endian_32(octets, 0).value_or(0))) {
        return avs_header(octets);
    }
    return prism_length <= octets.size() ? std::optional(LinkHeader{prism_length}) : std::nullopt;
}

// --- PPI: version (1 octet), flags (1), length (2), link type (4), fields. Each field has a type (2),
// the length of its data (2) and the data, padded to a multiple of 4 octets if the flags say so. Numbers
// are little-endian.

/// The flags of the first field 802.11-Common, behind its TSF timer; 0 without one.
std::uint32_t find_ppi_flags(Octets header) {
    constexpr std::size_t first_field = 8;
    constexpr std::size_t field_header = 4;
    constexpr std::uint32_t common = 2;
    constexpr std::size_t tsf_length = 8;
    const bool padded = (header[1] & 1U) != 0;
    for (std::size_t at = first_field;;) {
        const auto type = little_endian(header, at, 2);
        const auto length = little_endian(header, at + 2, 2);
        if (!length) {
            return 0;
        }
        if (type == common) {
            return little_endian(header, at + field_header + tsf_length, 2).value_or(0);
        }
        at += field_header + (padded ? aligned(*length, 4) : *length);
    }
}

std::optional<LinkHeader> ppi_header(Octets octets) {
    constexpr std::uint32_t fcs_at_end = 0x1;
    constexpr std::uint32_t bad_fcs = 0x4;
    constexpr std::size_t least = 8;
    const auto length = little_endian(octets, 2, 2);
    const auto inner = little_endian(octets, 4, 4);
    if (!inner || octets[0] != 0 || *length < least || *length > octets.size()) {
        return std::nullopt;
    }
    if (inner != DLT_IEEE802_11) {
        throw FileError("PPI before link type " + std::to_string(*inner) +
                        ", which is not IEEE 802.11 (105)");
    }
    const std::uint32_t flags = find_ppi_flags(octets.first(*length));
    return LinkHeader{*length, (flags & fcs_at_end) != 0, (flags & bad_fcs) != 0};
}

std::optional<LinkHeader> no_header(Octets /*octets*/) { return LinkHeader{}; }

struct LinkType {
    int number;
    std::string_view name;
    std::optional<LinkHeader> (*header)(Octets octets);
};
constexpr std::array<LinkType, 5> link_types{{
    {DLT_IEEE802_11, "IEEE 802.11", no_header},
    {DLT_PRISM_HEADER, "Prism", prism_header},
    {DLT_IEEE802_11_RADIO, "radiotap", radiotap_header},
    {DLT_IEEE802_11_RADIO_AVS, "AVS", avs_header},
    {DLT_PPI, "PPI", ppi_header},
}};

const LinkType* find_link_type(int number) {
    const auto* found = std::ranges::find(link_types, number, &LinkType::number);
    return found != link_types.end() ? found : nullptr;
}

}  // namespace

bool is_ieee802_11(int link_type) { return find_link_type(link_type) != nullptr; }

std::string ieee802_11_link_types() {
    std::string text;
    for (const LinkType& type : link_types) {
        text += text.empty() ? "" : ", ";
        text.append(type.name).append(" (").append(std::to_string(type.number)).append(")");
    }
    return text;
}

std::optional<MacFrame> mac_frame(int link_type, const Record& record) {
    const auto header = find_link_type(link_type)->header(record.octets);
    constexpr std::size_t fcs_length = 4;
    const std::size_t overhead = header ? header->length + (header->has_fcs ? fcs_length : 0) : 0;
    if (!header || record.length < overhead) {
        return std::nullopt;
    }
    // The FCS is at the end of the frame, which may not have been captured.
    const std::size_t length = record.length - overhead;
    const Octets captured = record.octets.subspan(header->length);
    return MacFrame{captured.first(std::min(captured.size(), length)), header->bad_fcs,
                    captured.size() < length};
}

}  // namespace nuvctl

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "frames/management_frame.hpp"

namespace nuvctl {

/// A field of an action frame between its dialog token and its elements.
struct ActionField {
    enum class Kind : std::uint8_t {
        NUMBER,      ///< least significant octet first
        BITS,        ///< as octets
        ADDRESS,     ///< a MAC address, which a frame may also end before
        TEXT,        ///< behind an octet that counts it
        SUBELEMENT,  ///< the header of what follows: a fixed ID and Length, nothing to show
    };

    std::string_view name;
    Kind kind;
    std::uint8_t size;       ///< octets; of a text, those of its count
    std::uint8_t mask = 0;   ///< the field is there if the bits `mask` of the octet behind the
    std::uint8_t value = 0;  ///< dialog token have this value
    std::string (*meaning)(std::uint8_t) = nullptr;  ///< the text of a code, a number of one octet

    /// Whether it is there in this frame; `octets` are those behind the dialog token.
    bool is_in(Octets octets) const {
        return mask == 0 || (!octets.empty() && (octets[0] & mask) == value);
    }
};

/// The header of the BSS Termination Duration subelement.
constexpr std::array<std::uint8_t, 2> termination_header{4, 10};

/// A kind of action frame: category, action, dialog token, fields, elements.
struct ActionType {
    std::string_view name;
    std::uint8_t category;
    std::uint8_t action;
    bool to_station;  ///< an access point sends it
    std::span<const ActionField> fields;
};

/// All that are decoded.
std::span<const ActionType> action_types();

/// A decoded action frame. What the body is too short for is absent. Valid as long as the octets it
/// was read from.
struct ActionFrame : DecodedFrame {
    struct Value {
        const ActionField* field = nullptr;
        std::optional<Octets> octets;  ///< none where the field is not there
    };

    std::optional<std::uint8_t> dialog_token;
    std::vector<Value> values;
};

/// The action frame in a frame, none if it is something else.
std::optional<ActionFrame> action_frame(const ManagementFrame& frame);

}  // namespace nuvctl

// SPDX-License-Identifier: Apache-2.0
#include "frames/action_frame.hpp"

#include <algorithm>
#include <array>
#include <sstream>
#include <string>

#include "nuv/ieee802_11_codes.hpp"

namespace nuvctl {

namespace {

using Kind = ActionField::Kind;

template <class Code>
std::string text_of(std::uint8_t value) {
    std::ostringstream os;
    os << static_cast<Code>(value);
    return os.str();
}

// IEEE Std 802.11-2020, 9.6.13.8 to 9.6.13.10.

constexpr std::array<ActionField, 1> btm_query_fields{{
    {.name = "query_reason",
     .kind = Kind::NUMBER,
     .size = 1,
     .meaning = text_of<nuv::BTMReasonCode>},
}};

constexpr std::uint8_t termination_included = 0x08;
constexpr std::uint8_t ess_disassociation_imminent = 0x10;
constexpr std::array<ActionField, 7> btm_request_fields{{
    {"request_mode", Kind::BITS, 1},
    {"disassociation_timer", Kind::NUMBER, 2},  // in beacon intervals
    {"validity_interval", Kind::NUMBER, 1},     // in beacon intervals
    {"bss_termination", Kind::SUBELEMENT, termination_header.size(), termination_included,
     termination_included},
    {"bss_termination_tsf", Kind::NUMBER, 8, termination_included, termination_included},
    {"bss_termination_duration", Kind::NUMBER, 2, termination_included,
     termination_included},  // in minutes
    {"session_information_url", Kind::TEXT, 1, ess_disassociation_imminent,
     ess_disassociation_imminent},
}};

constexpr std::uint8_t all_bits = 0xFF;
constexpr std::uint8_t accept = 0;
constexpr std::array<ActionField, 3> btm_response_fields{{
    {.name = "status_code",
     .kind = Kind::NUMBER,
     .size = 1,
     .meaning = text_of<nuv::BTMStatusCode>},
    {"bss_termination_delay", Kind::NUMBER, 1},  // in minutes
    {"target_bssid", Kind::ADDRESS, mac_address_length, all_bits, accept},
}};

constexpr std::size_t token = 2;  // behind category and action

constexpr std::uint8_t radio_measurement = 5;
constexpr std::uint8_t wnm = 10;
constexpr std::array<ActionType, 5> types{{
    {"measurement_report", radio_measurement, 1, false, {}},
    {"neighbor_report", radio_measurement, 5, true, {}},
    {"btm_query", wnm, 6, false, btm_query_fields},
    {"btm_request", wnm, 7, true, btm_request_fields},
    {"btm_response", wnm, 8, false, btm_response_fields},
}};

/// Reads the fields and returns where the elements begin. Where the body ends too early or contradicts
/// itself, that is the frame's error, and the remaining fields are absent.
std::size_t read_fields(Octets body, std::span<const ActionField> fields, ActionFrame& frame) {
    const Octets behind_token = body.subspan(std::min(body.size(), token + 1));
    std::size_t at = token + 1;
    for (const ActionField& field : fields) {
        ActionFrame::Value& value = frame.values.emplace_back();
        value.field = &field;
        if (frame.error || !field.is_in(behind_token)) {
            continue;
        }
        std::size_t size = field.size;
        if (field.kind == Kind::TEXT && at < body.size()) {
            size = body[at++];
        }
        if (field.kind == Kind::ADDRESS && at == body.size()) {
            continue;
        }
        if (body.size() - at < size) {
            frame.error = {"the frame ends before the end of " + std::string(field.name), {}};
            continue;
        }
        value.octets = body.subspan(at, size);
        at += size;
        if (field.kind == Kind::SUBELEMENT &&
            !std::ranges::equal(*value.octets, termination_header)) {
            frame.error = {"not the ID and Length of " + std::string(field.name), {}};
        }
    }
    return at;
}

std::optional<FrameError> first_error(const std::vector<Element>& elements) {
    for (std::size_t k = 0; k < elements.size(); ++k) {
        if (!elements[k].error.empty()) {
            return FrameError{elements[k].error, k};
        }
    }
    return std::nullopt;
}

}  // namespace

std::span<const ActionType> action_types() { return types; }

std::optional<ActionFrame> action_frame(const ManagementFrame& frame) {
    const Octets body = frame.body;
    if ((frame.subtype != Subtype::ACTION && frame.subtype != Subtype::ACTION_NO_ACK) ||
        body.size() < token) {
        return std::nullopt;
    }
    const auto* const type = std::ranges::find_if(
        types, [&](const ActionType& t) { return t.category == body[0] && t.action == body[1]; });
    if (type == types.end()) {
        return std::nullopt;
    }
    ActionFrame action;
    action.type = type->name;
    action.bssid = frame.bssid;
    // Reports go both ways.
    action.station = frame.transmitter == frame.bssid ? frame.receiver : frame.transmitter;
    if (body.size() == token) {
        action.error = {"the frame ends before its dialog token", {}};
    } else {
        action.dialog_token = body[token];
    }
    const std::size_t elements = read_fields(body, type->fields, action);
    if (!action.error) {
        ElementMaker maker(ElementMaker::Frame::REPORT);
        action.elements = read_elements(body, elements, maker);
        action.error = first_error(action.elements);
    }
    return action;
}

}  // namespace nuvctl

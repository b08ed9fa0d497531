// SPDX-License-Identifier: Apache-2.0
#include "json/encode_json.hpp"

#include <algorithm>
#include <limits>
#include <span>
#include <string>

#include "frames/action_frame.hpp"
#include "frames/association_request.hpp"
#include "frames/capture_file.hpp"
#include "json/fields.hpp"
#include "nuv/ieee802_11/ieee802_11_element_fields.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/serialization_exception.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

using nuv::serialization::SerializationException;
using ID = nuv::ieee802_11::IEEE802_11_Element_ID;
using Ext = nuv::ieee802_11::IEEE802_11_Element_ID_Extension;

void append(std::vector<std::uint8_t>& frame, std::span<const std::uint8_t> octets) {
    frame.insert(frame.end(), octets.begin(), octets.end());
}

void append_little_endian(std::vector<std::uint8_t>& frame, std::uint64_t value, unsigned size) {
    for (; size > 0; --size) {
        frame.push_back(static_cast<std::uint8_t>(value));
        value >>= 8U;
    }
}

nuv::MACAddress address(JsonFields& fields, std::string_view name) {
    nuv::MACAddress value;
    if (!value.parse_string(fields.text(name))) {
        fields.fail("not of the form 02:00:00:00:00:01");
    }
    return value;
}

Timestamp time(JsonFields& fields) {
    const auto value = parse_timestamp(fields.text("time"));
    if (!value) {
        fields.fail("not of the form 2015-11-03T12:34:56.123456Z");
    }
    if (value->seconds < 0 || value->seconds > std::numeric_limits<std::uint32_t>::max()) {
        fields.fail("not a time that captures can hold, 1970 to 2106");
    }
    return *value;
}

/// An element that could not be read, as it was received. Only the last one of a frame can be cut short:
/// then it has the Length that it had, as far as that was there.
std::vector<std::uint8_t> received_element(JsonFields& fields, std::uint8_t id, bool is_last) {
    std::vector<std::uint8_t> octets{id, 0};
    if (fields.has("extension")) {
        octets.push_back(static_cast<std::uint8_t>(fields.number("extension", 8)));
    }
    fields.open_object("fields");
    append(octets, fields.octets("body_hex"));
    std::size_t length = octets.size() - 2;
    if (length > std::numeric_limits<std::uint8_t>::max()) {
        fields.fail("more than an element holds");
    }
    fields.close_object();
    if (is_last && fields.has("length")) {
        length = std::max<std::size_t>(length, fields.number("length", 8));
    } else if (is_last && length == 0) {
        octets.pop_back();
        return octets;
    }
    octets[1] = static_cast<std::uint8_t>(length);
    return octets;
}

std::vector<std::uint8_t> element(JsonFields& fields, ElementMaker& maker, bool is_last) {
    fields.open_object({});
    for (const auto* derived : {"name", "offset", "length", "error"}) {
        fields.ignore(derived);
    }
    const auto id = static_cast<std::uint8_t>(fields.number("id", 8));
    const bool failed = fields.has("error");
    const bool extended = static_cast<ID>(id) == ID::ELEMENT_ID_EXTENSION;
    std::uint8_t extension = 0;
    if ((extended && !failed) || fields.has("extension")) {
        extension = static_cast<std::uint8_t>(fields.number("extension", 8));
        if (!extended) {
            fields.fail("only elements with ID 255 have one");
        }
    }
    const auto make = [&] { return maker.make(id, extension); };
    auto octets =
        failed ? received_element(fields, id, is_last)
               : assign_element(fields, static_cast<ID>(id), static_cast<Ext>(extension), make);
    fields.close_object();
    try {
        maker.read(*make(), octets);
    } catch (const SerializationException&) {
        // Given by its octets, it may be anything.
        return octets;
    }
    return octets;
}

void append_elements(JsonFields& fields, ElementMaker maker, std::vector<std::uint8_t>& frame) {
    for (std::size_t count = fields.open_list("elements"); count > 0; --count) {
        append(frame, element(fields, maker, count == 1));
        if (frame.size() > max_record) {
            fields.fail("the frame has more than " + std::to_string(max_record) + " octets");
        }
    }
    fields.close_list();
}

void append_bits(JsonFields& fields, std::string_view name, std::size_t size,
                 std::vector<std::uint8_t>& frame) {
    const auto octets = fields.octets(name);
    if (octets.size() != size) {
        fields.fail("not " + std::to_string(size) + " octets");
    }
    append(frame, octets);
}

void append_request(JsonFields& fields, bool reassociation, std::vector<std::uint8_t>& frame) {
    for (const auto* derived : {"ssid", "ssid_hex", "security", "security_detail", "rsn"}) {
        fields.ignore(derived);
    }
    append_bits(fields, "capability_information", 2, frame);
    append_little_endian(frame, fields.number("listen_interval", 16), 2);
    if (reassociation || fields.has("current_ap")) {
        append(frame, address(fields, "current_ap").octets());
        if (!reassociation) {
            fields.fail("only a reassociation_request has one");
        }
    }
    append_elements(fields, ElementMaker(ElementMaker::Frame::REQUEST), frame);
}

void append_value(JsonFields& fields, const ActionField& field, std::vector<std::uint8_t>& frame) {
    using Kind = ActionField::Kind;
    if (field.kind == Kind::NUMBER) {
        append_little_endian(frame, fields.number(field.name, 8U * field.size), field.size);
    } else if (field.kind == Kind::BITS) {
        append_bits(fields, field.name, field.size, frame);
    } else if (field.kind == Kind::ADDRESS) {
        append(frame, address(fields, field.name).octets());
    } else if (field.kind == Kind::TEXT) {
        std::string text = fields.text(field.name);
        if (const std::string hex = hex_of(field.name); fields.has(hex)) {
            const auto octets = fields.octets(hex);
            // A text of the parser ends at its first NUL.
            std::string read = to_utf8(as_text(octets));
            read.erase(std::min(read.find('\0'), read.size()));
            text = read == text ? as_text(octets) : text;
        }
        if (text.size() > std::numeric_limits<std::uint8_t>::max()) {
            fields.fail("more than 255 octets");
        }
        frame.push_back(static_cast<std::uint8_t>(text.size()));
        frame.insert(frame.end(), text.begin(), text.end());
    } else {
        append(frame, termination_header);
    }
}

/// Whether the frame ended within its fields: then it has an error, but none in an element.
bool ends_in_fields(JsonFields& fields) {
    if (!fields.has("error")) {
        return false;
    }
    fields.open_object("error");
    const bool in_element = fields.has("element");
    fields.leave_object();
    return !in_element;
}

void append_action(JsonFields& fields, const ActionType& type, std::vector<std::uint8_t>& frame) {
    frame.push_back(type.category);
    frame.push_back(type.action);
    frame.push_back(static_cast<std::uint8_t>(fields.number("dialog_token", 8)));
    const std::size_t behind_token = frame.size();
    for (const ActionField& field : type.fields) {
        if (field.meaning != nullptr) {
            fields.ignore(meaning_of(field.name));
        }
        // Null is what is said of an absent field; another value is then one too many.
        const bool given = fields.has(field.name);
        const bool optional = field.kind == ActionField::Kind::ADDRESS;
        if (field.is_in(Octets(frame).subspan(behind_token)) &&
            (given || !optional || ends_in_fields(fields))) {
            append_value(fields, field, frame);
        }
    }
    append_elements(fields, ElementMaker(ElementMaker::Frame::REPORT), frame);
}

}  // namespace

EncodedFrame read_json(nuv::serialization::YAJLNode document) {
    JsonFields fields(std::move(document));
    for (const auto* derived : {"file", "frame", "time_raw", "fcs", "truncated", "error"}) {
        fields.ignore(derived);
    }
    const std::string name = fields.text("type");
    const bool reassociation = name == AssociationRequest::reassociation;
    const auto action = std::ranges::find(action_types(), name, &ActionType::name);
    const bool is_action = action != action_types().end();
    if (!is_action && !reassociation && name != AssociationRequest::association) {
        fields.fail("not one that decode knows");
    }
    EncodedFrame frame;
    frame.time = time(fields);
    const nuv::MACAddress station = address(fields, "station");
    const nuv::MACAddress bssid = address(fields, "bssid");

    // MAC header: frame control, duration, three addresses, sequence control
    const bool to_station = is_action && action->to_station;
    const Subtype subtype = is_action       ? Subtype::ACTION
                            : reassociation ? Subtype::REASSOCIATION_REQUEST
                                            : Subtype::ASSOCIATION_REQUEST;
    frame.octets = {static_cast<std::uint8_t>(subtype), 0, 0, 0};
    append(frame.octets, (to_station ? station : bssid).octets());
    append(frame.octets, (to_station ? bssid : station).octets());
    append(frame.octets, bssid.octets());
    append_little_endian(frame.octets, 0, 2);
    frame.body = frame.octets.size();

    if (is_action) {
        append_action(fields, *action, frame.octets);
    } else {
        append_request(fields, reassociation, frame.octets);
    }
    fields.finish();
    frame.notes = fields.notes();
    return frame;
}

}  // namespace nuvctl

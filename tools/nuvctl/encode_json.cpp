// SPDX-License-Identifier: Apache-2.0
#include "encode_json.hpp"

#include <limits>
#include <span>
#include <sstream>

#include "element.hpp"
#include "json_fields.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuvctl {

namespace {

using nuv::serialization::SerializationException;
using ID = nuv::ieee802_11::IEEE802_11_Element_ID;

void append(std::vector<std::uint8_t>& frame, std::span<const std::uint8_t> octets) {
    frame.insert(frame.end(), octets.begin(), octets.end());
}

void append_little_endian_16(std::vector<std::uint8_t>& frame, std::uint64_t value) {
    frame.push_back(static_cast<std::uint8_t>(value));
    frame.push_back(static_cast<std::uint8_t>(value >> 8U));
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

/// The octets that are given, whatever the element is: also for what its class would not write.
std::vector<std::uint8_t> raw_element(JsonFields& fields, std::uint8_t id, std::uint8_t extension) {
    const auto body = fields.octets("body_hex");
    std::vector<std::uint8_t> octets{id, 0};
    if (static_cast<ID>(id) == ID::ELEMENT_ID_EXTENSION) {
        octets.push_back(extension);
    }
    append(octets, body);
    if (octets.size() - 2 > std::numeric_limits<std::uint8_t>::max()) {
        fields.fail("more than an element holds");
    }
    octets[1] = static_cast<std::uint8_t>(octets.size() - 2);
    return octets;
}

std::vector<std::uint8_t> written(const nuv::ieee802_11::IEEE802_11_Element_Base& element) {
    std::ostringstream os;
    nuv::serialization::SerializationContext context;
    element.serialize_impl(os, context);
    const std::string octets = os.str();
    return {octets.begin(), octets.end()};
}

std::vector<std::uint8_t> element(JsonFields& fields, ElementMaker& maker) {
    fields.open_object({});
    for (const auto* derived : {"name", "offset", "length"}) {
        fields.ignore(derived);
    }
    const auto id = static_cast<std::uint8_t>(fields.number("id", 8));
    const bool extended = static_cast<ID>(id) == ID::ELEMENT_ID_EXTENSION;
    std::uint8_t extension = 0;
    if (extended || fields.has("extension")) {
        extension = static_cast<std::uint8_t>(fields.number("extension", 8));
        if (!extended) {
            fields.fail("only elements with ID 255 have one");
        }
    }
    if (fields.has("error")) {
        fields.text("error");
        fields.fail("could not be read; \"fields\":{\"body_hex\":\"...\"} can be written instead");
    }
    fields.open_object("fields");
    std::vector<std::uint8_t> octets;
    try {
        const bool raw = fields.size() == 1 && fields.has("body_hex");
        const auto typed = raw ? nullptr : maker.make(id, extension);
        if (typed == nullptr || typed->is_dummy()) {
            octets = raw_element(fields, id, extension);
            fields.close_object();
        } else {
            typed->assign_fields(fields);
            fields.close_object();
            octets = written(*typed);
            maker.remember(*typed);
        }
    } catch (const SerializationException& error) {
        fields.fail(error.what());
    }
    fields.close_object();
    return octets;
}

}  // namespace

EncodedFrame read_json(nuv::serialization::YAJLNode document) {
    JsonFields fields(std::move(document));
    for (const auto* derived :
         {"file", "frame", "ssid", "ssid_hex", "security", "rsn", "fcs", "truncated", "error"}) {
        fields.ignore(derived);
    }
    EncodedFrame frame;
    const std::string type = fields.text("type");
    const bool reassociation = type == "reassociation_request";
    if (!reassociation && type != "association_request") {
        fields.fail("neither association_request nor reassociation_request");
    }
    frame.time = time(fields);
    const nuv::MACAddress station = address(fields, "station");
    const nuv::MACAddress bssid = address(fields, "bssid");

    // MAC header: frame control, duration, three addresses, sequence control
    frame.octets = {static_cast<std::uint8_t>(reassociation ? 0x20 : 0x00), 0, 0, 0};
    append(frame.octets, bssid.octets());
    append(frame.octets, station.octets());
    append(frame.octets, bssid.octets());
    append_little_endian_16(frame.octets, 0);
    frame.body = frame.octets.size();

    append_little_endian_16(frame.octets, fields.number("capability_information", 16));
    append_little_endian_16(frame.octets, fields.number("listen_interval", 16));
    if (reassociation || fields.has("current_ap")) {
        append(frame.octets, address(fields, "current_ap").octets());
        if (!reassociation) {
            fields.fail("only a reassociation_request has one");
        }
    }
    ElementMaker maker;
    for (std::size_t count = fields.open_list("elements"); count > 0; --count) {
        append(frame.octets, element(fields, maker));
    }
    fields.close_list();
    fields.finish();
    return frame;
}

}  // namespace nuvctl

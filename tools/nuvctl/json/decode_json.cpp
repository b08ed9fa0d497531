// SPDX-License-Identifier: Apache-2.0
#include "json/decode_json.hpp"

#include <algorithm>
#include <array>

#include "frames/security.hpp"
#include "json/writer.hpp"
#include "nuv/ieee802_11/ieee802_11_element_fields.hpp"
#include "nuv/ieee802_11/ieee802_11_field_visitor.hpp"
#include "nuv/ieee802_11/rsn_security.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

using nuv::ieee802_11::IEEE802_11_CipherSuite;
using nuv::ieee802_11::IEEE802_11_RSNElement;

class FieldWriter : public nuv::ieee802_11::IEEE802_11_FieldVisitor {
public:
    explicit FieldWriter(Json& json) : json_(json) {}

    void number(std::string_view name, std::uint64_t value) override { json_.number(name, value); }
    void text(std::string_view name, std::string_view value) override {
        json_.text(name, to_utf8(value));
    }
    void octets(std::string_view name, std::span<const std::uint8_t> value) override {
        json_.text(name, to_hex(value));
    }
    void open_list(std::string_view name) override { json_.open_list(name); }
    void close_list() override { json_.close_list(); }
    void open_object(std::string_view name) override { json_.open_object(name); }
    void close_object() override { json_.close_object(); }

private:
    Json& json_;
};

/// Bits as they are on the air.
std::array<std::uint8_t, 2> little_endian(std::uint16_t bits) {
    return {static_cast<std::uint8_t>(bits), static_cast<std::uint8_t>(bits >> 8U)};
}

void write_suites(Json& json, std::string_view name, const IEEE802_11_RSNElement::Suites& suites) {
    json.open_list(name);
    for (const IEEE802_11_CipherSuite& suite : suites) {
        json.text({}, suite.to_string());
    }
    json.close_list();
}

/// Whether an RSN element goes as far as its capabilities, which the class does not keep: zero and
/// absent are the same to it.
bool reaches_capabilities(const IEEE802_11_RSNElement& rsn, std::size_t body_size) {
    constexpr std::size_t suite = 4;
    constexpr std::size_t two_octets = 2;  // version, each count, capabilities
    return body_size >= two_octets + (rsn.has_group_data() ? suite : 0) + two_octets +
                            suite * rsn.get_pairwise_cipher_list().size() + two_octets +
                            suite * rsn.get_akm_suite_list().size() + two_octets;
}

void write_rsn(Json& json, const AssociationRequest& request) {
    const auto* rsn = request.find<IEEE802_11_RSNElement>();
    if (rsn == nullptr) {
        json.null("rsn");
        return;
    }
    std::size_t body_size = 0;
    for (const Element& element : request.elements) {
        if (element.typed.get() == rsn) {
            body_size = element.body.size();
        }
    }
    const auto suite = [&json](std::string_view name, bool present,
                               const IEEE802_11_CipherSuite& value) {
        present ? json.text(name, value.to_string()) : json.null(name);
    };
    json.open_object("rsn");
    json.number("version", 1);
    suite("group_data", rsn->has_group_data(), rsn->get_group_data());
    write_suites(json, "pairwise", rsn->get_pairwise_cipher_list());
    write_suites(json, "akm", rsn->get_akm_suite_list());
    if (reaches_capabilities(*rsn, body_size)) {
        json.text("capabilities", to_hex(little_endian(static_cast<std::uint16_t>(
                                      rsn->get_rsn_capabilities().to_ulong()))));
    } else {
        json.null("capabilities");
    }
    json.number("pmkid_count", rsn->get_pmkid_list().size());
    suite("group_management", rsn->has_group_management_cipher(),
          rsn->get_group_management_cipher());
    json.close_object();
}

void write_error(Json& json, const DecodedFrame& frame) {
    if (!frame.error) {
        json.null("error");
        return;
    }
    const auto write_place = [&json](const auto* element) {
        if (element == nullptr) {
            json.null("element");
            return;
        }
        json.open_object("element");
        json.number("id", element->id);
        json.optional_number("extension", element->extension);
        json.number("offset", element->offset);
        json.close_object();
    };
    const Element* element =
        frame.error->element ? &frame.elements[*frame.error->element] : nullptr;
    json.open_object("error");
    json.text("message", to_utf8(frame.error->message));
    write_place(element);
    if (element != nullptr && element->link) {
        const FailedLink& link = *element->link;
        json.open_object("link");
        json.number("link_id", link.link_id);
        json.number("offset", link.offset);
        write_place(link.element ? &*link.element : nullptr);
        json.close_object();
    }
    json.close_object();
}

void write_element(Json& json, const Element& element) {
    json.open_object({});
    json.number("id", element.id);
    json.optional_number("extension", element.extension);
    const std::string name =
        ieee802_11_element_name(static_cast<nuv::ieee802_11::IEEE802_11_Element_ID>(element.id),
                                static_cast<nuv::ieee802_11::IEEE802_11_Element_ID_Extension>(
                                    element.extension.value_or(0)));
    name.empty() ? json.null("name") : json.text("name", name);
    json.number("offset", element.offset);
    json.optional_number("length", element.length);
    if (!element.error.empty()) {
        json.text("error", to_utf8(element.error));
    }
    FieldWriter fields(json);
    // Of one that cannot be read whole no field is certain.
    if (element.typed != nullptr && element.error.empty()) {
        visit_element(fields, *element.typed, element.octets);
    } else {
        fields.open_object("fields");
        fields.octets("body_hex", element.body);
        fields.close_object();
    }
    json.close_object();
}

void write_time(Json& json, const Timestamp& time) {
    if (const auto text = to_string(time)) {
        json.text("time", *text);
    } else {
        json.null("time");
        json.text("time_raw", raw_text(time));
    }
}

/// Writes what all frames have, and between it what `middle` writes.
template <class Middle>
void write_frame(std::ostream& os, const Source& source, const DecodedFrame& frame, bool pretty,
                 Middle middle) {
    write_object(os, pretty, [&](Json& json) {
        json.text("file", to_utf8(source.file));
        json.number("frame", source.record.number);
        write_time(json, source.record.time);
        json.text("type", frame.type);
        json.text("station", frame.station.to_string());
        json.text("bssid", frame.bssid.to_string());
        middle(json);
        if (source.mac.bad_fcs) {
            json.text("fcs", "bad");
        }
        if (source.mac.truncated) {
            json.boolean("truncated", true);
        }
        write_error(json, frame);
        json.open_list("elements");
        for (const Element& element : frame.elements) {
            write_element(json, element);
        }
        json.close_list();
    });
}

void write_value(Json& json, const ActionFrame::Value& value) {
    using Kind = ActionField::Kind;
    const auto& [field, octets] = value;
    if (field->kind == Kind::SUBELEMENT) {
        return;
    }
    if (!octets) {
        json.null(field->name);
        if (field->meaning != nullptr) {
            json.null(meaning_of(field->name));
        }
    } else if (field->kind == Kind::NUMBER) {
        std::uint64_t number = 0;
        for (std::size_t k = octets->size(); k-- > 0;) {
            number = number << 8U | (*octets)[k];
        }
        json.number(field->name, number);
        if (field->meaning != nullptr) {
            json.text(meaning_of(field->name), field->meaning(octets->front()));
        }
    } else {
        if (field->kind == Kind::TEXT &&
            (!is_utf8(as_text(*octets)) || std::ranges::count(*octets, 0) != 0)) {
            json.text(hex_of(field->name), to_hex(*octets));
        }
        json.text(field->name, field->kind == Kind::ADDRESS ? address_in(*octets).to_string()
                               : field->kind == Kind::TEXT  ? to_utf8(as_text(*octets))
                                                            : to_hex(*octets));
    }
}

}  // namespace

void write_json(std::ostream& os, const Source& source, const AssociationRequest& request,
                bool pretty) {
    write_frame(os, source, request, pretty, [&](Json& json) {
        request.current_ap ? json.text("current_ap", request.current_ap->to_string())
                           : json.null("current_ap");
        request.capability_information
            ? json.text("capability_information",
                        to_hex(little_endian(*request.capability_information)))
            : json.null("capability_information");
        json.optional_number("listen_interval", request.listen_interval);
        const std::string_view ssid = as_text(request.ssid);
        is_utf8(ssid) ? json.text("ssid", ssid) : json.null("ssid");
        json.text("ssid_hex", to_hex(request.ssid));
        const Security security = security_of(request);
        json.text("security", enum_to_string(security.mode));
        if (!security.detail.empty()) {
            json.text("security_detail", security.detail);
        }
        write_rsn(json, request);
    });
}

void write_json(std::ostream& os, const Source& source, const ActionFrame& frame, bool pretty) {
    write_frame(os, source, frame, pretty, [&](Json& json) {
        json.optional_number("dialog_token", frame.dialog_token);
        for (const ActionFrame::Value& value : frame.values) {
            write_value(json, value);
        }
    });
}

}  // namespace nuvctl

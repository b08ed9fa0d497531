// SPDX-License-Identifier: Apache-2.0
#include "decode_json.hpp"

#include <ostream>

#include "nuv/ieee802_11/ieee802_11_field_visitor.hpp"
#include "nuv/ieee802_11/rsn_security.hpp"
#include "nuv/serialization_exception.hpp"
#include "nuv/yajl_stream.hpp"
#include "security.hpp"
#include "text.hpp"

namespace nuvctl {

namespace {

using nuv::ieee802_11::IEEE802_11_CipherSuite;
using nuv::ieee802_11::IEEE802_11_RSNElement;
using nuv::serialization::YAJLStream;

/// A YAJLStream whose failures are exceptions and whose members have their name in the call.
class Json {
public:
    explicit Json(YAJLStream& stream) : stream_(stream) {}

    void null(std::string_view name) { check(key(name) && stream_.write_null()); }
    void boolean(std::string_view name, bool value) {
        check(key(name) && stream_.write_bool(value));
    }
    void number(std::string_view name, std::uint64_t value) {
        check(key(name) && stream_.write_integer(value));
    }
    void text(std::string_view name, std::string_view value) {
        check(key(name) && stream_.write_string(value));
    }
    template <class T>
    void optional_number(std::string_view name, const std::optional<T>& value) {
        value ? number(name, *value) : null(name);
    }
    void open_object(std::string_view name) { check(key(name) && stream_.open_object()); }
    void close_object() { check(stream_.close_object()); }
    void open_list(std::string_view name) { check(key(name) && stream_.open_array()); }
    void close_list() { check(stream_.close_array()); }

private:
    bool key(std::string_view name) { return name.empty() || stream_.write_string(name); }
    static void check(bool written) {
        if (!written) {
            throw nuv::serialization::SerializationException("cannot write to standard output");
        }
    }

    YAJLStream& stream_;
};

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
        json.number("capabilities", rsn->get_rsn_capabilities().to_ullong());
    } else {
        json.null("capabilities");
    }
    json.number("pmkid_count", rsn->get_pmkid_list().size());
    suite("group_management", rsn->has_group_management_cipher(),
          rsn->get_group_management_cipher());
    json.close_object();
}

void write_error(Json& json, const AssociationRequest& request) {
    if (!request.error) {
        json.null("error");
        return;
    }
    json.open_object("error");
    json.text("message", to_utf8(request.error->message));
    if (request.error->element) {
        const Element& element = request.elements[*request.error->element];
        json.open_object("element");
        json.number("id", element.id);
        json.optional_number("extension", element.extension);
        json.number("offset", element.offset);
        json.close_object();
    } else {
        json.null("element");
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
    if (element.typed == nullptr) {
        json.text("error", to_utf8(element.error));
    } else {
        json.open_object("fields");
        if (element.typed->is_dummy()) {
            json.text("body_hex", to_hex(element.body));
        } else {
            FieldWriter fields(json);
            element.typed->visit_fields(fields);
        }
        json.close_object();
    }
    json.close_object();
}

}  // namespace

void write_json(std::ostream& os, std::string_view file, const Record& record,
                const MacFrame& frame, const AssociationRequest& request, bool pretty) {
    YAJLStream stream(os, static_cast<YAJLStream::YAJLIndentation>(pretty ? 2 : 0));
    Json json(stream);
    json.open_object({});
    json.text("file", to_utf8(file));
    json.number("frame", record.number);
    json.text("time", to_string(record.time));
    json.text("type", request.reassociation ? "reassociation_request" : "association_request");
    json.text("station", request.station.to_string());
    json.text("bssid", request.bssid.to_string());
    request.current_ap ? json.text("current_ap", request.current_ap->to_string())
                       : json.null("current_ap");
    json.optional_number("capability_information", request.capability_information);
    json.optional_number("listen_interval", request.listen_interval);
    const std::string_view ssid(reinterpret_cast<const char*>(request.ssid.data()),
                                request.ssid.size());
    is_utf8(ssid) ? json.text("ssid", ssid) : json.null("ssid");
    json.text("ssid_hex", to_hex(request.ssid));
    json.text("security", security_text(request));
    write_rsn(json, request);
    if (frame.bad_fcs) {
        json.text("fcs", "bad");
    }
    if (frame.truncated) {
        json.boolean("truncated", true);
    }
    write_error(json, request);
    json.open_list("elements");
    for (const Element& element : request.elements) {
        write_element(json, element);
    }
    json.close_list();
    json.close_object();
    if (!pretty) {
        os << '\n';
    }
}

}  // namespace nuvctl

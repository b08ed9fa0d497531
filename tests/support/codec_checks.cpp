// SPDX-License-Identifier: Apache-2.0
#include "tests/support/codec_checks.hpp"

#include <istream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string_view>
#include <type_traits>
#include <vector>

#include "internal/byte_cursor.hpp"
#include "nuv/serialization.hpp"
#include "tests/support/failures.hpp"

namespace nuv::test {

namespace {

using serialization::SerializationContext;

// --- Where writing is deliberately not the inverse of reading. Everything else comes back equal:
// bodies that are written as zeros, zero capabilities and trailing zeros that are not written
// change the octets, and what they are read as stays the same.

/// A Non-Inheritance element's Length promises one octet more than is written.
bool promises_one_octet_more(const Element& element) {
    return !element.is_dummy() && element.get_type() == ElementID::ELEMENT_ID_EXTENSION &&
           element.get_extension_type() == ExtensionID::NON_INHERITANCE;
}

/// What get_length() says of an element written in `size` octets: a measurement report keeps it in 8
/// bits.
std::size_t length_of(const Element& element, std::size_t size) {
    return element.get_type() == ElementID::MEASUREMENT_REPORT ? size % 256 : size;
}

/// A neighbor report whose last subelement has no body is not read back: such a one is not looked at.
bool loses_its_last_subelement(const Element& element) {
    const auto* report = dynamic_cast<const ieee802_11::IEEE802_11_NeighborReport*>(&element);
    return report != nullptr && !report->sub_elements().empty() &&
           report->sub_elements().back()->get_length() == 2;
}

/// With what text an element that was read may be refused: lists of rates that were empty, an RSN
/// element of more than 255 octets with its header, a Non-Inheritance element whose promise is too much.
std::string_view refusal_to_write(const Element& element) {
    switch (element.get_type()) {
        case ElementID::SUPPORTED_RATES:
        case ElementID::EXTENDED_SUPPORTED_RATES:
            return "Invalid size";
        case ElementID::RSN:
            return "Invalid length";
        default:
            return promises_one_octet_more(element) ? "Invalid length" : "";
    }
}

// --- Fields

/// The fields of an element, to be handed to another one.
class FieldRecord : public ieee802_11::IEEE802_11_FieldVisitor {
public:
    struct Field {
        char kind;  // n, t, o, or the bracket that it is in text
        std::string name;
        std::uint64_t number;  // the value, or how many entries are in a list
        Octets octets;
    };

    explicit FieldRecord(const Element& element) { element.visit_fields(*this); }

    void number(std::string_view name, std::uint64_t value) override { add('n', name, value, {}); }
    void text(std::string_view name, std::string_view value) override {
        add('t', name, 0, {value.begin(), value.end()});
    }
    void octets(std::string_view name, std::span<const std::uint8_t> value) override {
        add('o', name, 0, {value.begin(), value.end()});
    }
    void open_list(std::string_view name) override { open('[', name); }
    void close_list() override { close(']'); }
    void open_object(std::string_view name) override { open('{', name); }
    void close_object() override { close('}'); }

    std::vector<Field> fields{{'{', {}, 0, {}}};

private:
    void add(char kind, std::string_view name, std::uint64_t value, const Octets& octets) {
        ++fields[open_.back()].number;
        fields.push_back({kind, std::string(name), value, octets});
    }
    void open(char kind, std::string_view name) {
        add(kind, name, 0, {});
        open_.push_back(fields.size() - 1);
    }
    void close(char kind) {
        open_.pop_back();
        fields.push_back({kind, {}, 0, {}});
    }

    std::vector<std::size_t> open_{0};
};

/// Hands them out in the order in which they were shown, and in no other. What an element refuses is
/// a SerializationException.
class FieldReplay : public ieee802_11::IEEE802_11_FieldSource {
public:
    FieldReplay(const FieldRecord& record, Element& element) : fields_(record.fields) {
        element.assign_fields(*this);
        if (next_ != fields_.size()) {
            throw std::logic_error("fields left");
        }
    }

    bool has(std::string_view name) override {
        int depth = 0;
        for (std::size_t k = next_; k < fields_.size() && depth >= 0; ++k) {
            const char kind = fields_[k].kind;
            if (depth == 0 && fields_[k].name == name && kind != ']' && kind != '}') {
                return true;
            }
            depth += kind == '[' || kind == '{' ? 1 : kind == ']' || kind == '}' ? -1 : 0;
        }
        return false;
    }
    std::uint64_t number(std::string_view name, unsigned bits) override {
        const std::uint64_t value = take('n', name).number;
        if (bits < 64 && value >> bits != 0) {
            throw std::logic_error("too large: " + std::string(name));
        }
        return value;
    }
    std::string text(std::string_view name) override { return to_string(take('t', name).octets); }
    Octets octets(std::string_view name) override { return take('o', name).octets; }
    std::size_t open_list(std::string_view name) override {
        return static_cast<std::size_t>(take('[', name).number);
    }
    void close_list() override { take(']', {}); }
    void open_object(std::string_view name) override {
        sizes_.push_back(static_cast<std::size_t>(take('{', name).number));
    }
    void close_object() override {
        take('}', {});
        sizes_.pop_back();
    }
    std::size_t size() override { return sizes_.back(); }
    [[noreturn]] void fail(std::string_view message) override {
        throw SerializationException(std::string(message));
    }

private:
    const FieldRecord::Field& take(char kind, std::string_view name) {
        if (next_ == fields_.size() || fields_[next_].name != name || fields_[next_].kind != kind) {
            throw std::logic_error("not the field to come: " + std::string(name));
        }
        return fields_[next_++];
    }

    const std::vector<FieldRecord::Field>& fields_;
    std::size_t next_ = 1;
    std::vector<std::size_t> sizes_;  // of the objects that are open
};

// --- Reading

/// A stream buffer over another one that has one octet at hand and does not know how many follow, as
/// a file's or a socket's may.
class TrickleBuf : public std::streambuf {
public:
    explicit TrickleBuf(std::streambuf& source) : source_(source) {}

protected:
    int_type underflow() override { return source_.sgetc(); }
    int_type uflow() override { return source_.sbumpc(); }
    std::streamsize showmanyc() override { return source_.in_avail() > 0 ? 1 : -1; }
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override {
        return source_.pubseekoff(offset, from, which);
    }
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
        return source_.pubseekpos(position, which);
    }

private:
    std::streambuf& source_;
};

template <class T>
Reading<T> read_from(std::unique_ptr<T> object, std::istream& is) {
    SerializationContext ctx;
    Reading<T> reading{std::move(object), {}};
    reading.error = message_of([&] { reading.object->deserialize_impl(is, ctx); });
    reading.state = is.rdstate();
    reading.position = is.rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    return reading;
}

/// Reads without a stream. Only the frame that holds an element sees where that one stops after an
/// exception.
template <class T>
Reading<T> read_from_octets(const Maker<T>& make, const Octets& octets, const Reading<T>& like) {
    SerializationContext ctx;
    Reading<T> reading{make(), {}, like.state, like.position};
    reading.error = message_of([&] {
        const auto state = reading.object->deserialize(octets, ctx);
        reading.state = state;
    });
    if constexpr (requires(impl::ByteCursor & cursor) {
                      reading.object->deserialize_from(cursor, ctx);
                  }) {
        impl::ByteCursor cursor(octets);
        message_of([&] { reading.object->deserialize_from(cursor, ctx); });
        reading.state = cursor.rdstate();
        reading.position = static_cast<std::streamoff>(cursor.consumed());
    }
    return reading;
}

/// What differs between two readings of the same octets, in words.
template <class T>
std::string difference(const Reading<T>& a, const Reading<T>& b) {
    if (a.error != b.error) {
        return "'" + a.error + "' against '" + b.error + "'";
    }
    if (a.state != b.state || a.position != b.position) {
        return "state " + std::to_string(a.state) + " at " + std::to_string(a.position) +
               " against " + std::to_string(b.state) + " at " + std::to_string(b.position);
    }
    if (!(*a.object == *b.object && *b.object == *a.object) ||
        a.object->get_length() != b.object->get_length()) {
        return "other fields";
    }
    return {};
}

}  // namespace

std::unique_ptr<Element> make_element(ElementID id, ExtensionID extension, std::uint8_t maps) {
    using Container = Frame::ElementContainer;
    // A frame passes over these.
    if (id == ElementID::MEASUREMENT_REPORT) {
        return std::make_unique<ieee802_11::IEEE802_11_MeasurementReport>();
    }
    if (id == ElementID::NEIGHBOR_REPORT) {
        return std::make_unique<ieee802_11::IEEE802_11_NeighborReport>();
    }
    if (id != ElementID::ELEMENT_ID_EXTENSION) {
        return Container::create_element(id);
    }
    if (extension == ExtensionID::EHT_CAPABILITIES) {
        return std::make_unique<ieee802_11::IEEE802_11_EHTCapabilities>(
            (maps & 1U) != 0, (maps & 2U) != 0, (maps & 4U) != 0);
    }
    if (extension == ExtensionID::EHT_OPERATION) {
        return std::make_unique<ieee802_11::IEEE802_11_EHTOperation>();
    }
    return Container().create_extended_element(extension);
}

std::string field_text(const Element& element) {
    const FieldRecord record(element);
    std::string text;
    for (const auto& [kind, name, number, octets] : std::span(record.fields).subspan(1)) {
        const bool opens = kind == '[' || kind == '{';
        const bool closes = kind == ']' || kind == '}';
        text += closes ? "" : name + '=';
        text += kind == 'n'   ? std::to_string(number)
                : kind == 't' ? to_string(octets)
                : kind == 'o' ? to_hex(octets)
                              : std::string(1, kind);
        text += opens ? "" : " ";
    }
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

template <class T>
Reading<T> read_from_memory(std::unique_ptr<T> object, std::span<const std::uint8_t> octets) {
    MemBuf buffer(octets);
    std::istream is(&buffer);
    return read_from(std::move(object), is);
}

template <class T>
std::string check_ways_of_reading_agree(const Maker<T>& make, const Octets& octets) {
    const auto expected = read_from_memory(make(), octets);
    std::string problems;
    const auto compare = [&](const char* way, const Reading<T>& reading) {
        const std::string found = difference(expected, reading);
        problems += found.empty() ? "" : std::string(way) + ": " + found + '\n';
    };
    std::stringstream string_stream(to_string(octets));
    compare("string stream", read_from(make(), string_stream));

    MemBuf memory(octets);
    TrickleBuf trickle(memory);
    std::istream trickling(&trickle);
    compare("trickle", read_from(make(), trickling));

    constexpr auto everything = std::ios::badbit | std::ios::failbit | std::ios::eofbit;
    std::stringstream throwing(to_string(octets));
    throwing.exceptions(everything);
    compare("stream set to throw", read_from(make(), throwing));
    problems += throwing.exceptions() == everything ? "" : "not set to throw any more\n";

    // A range of a stream that goes on behind it.
    std::stringstream parent("before" + to_string(octets) + "behind");
    constexpr std::streamoff start = 6;
    parent.seekg(start);
    LimitedIStream bounded(parent, static_cast<std::int64_t>(octets.size()));
    auto reading = read_from(make(), bounded);
    reading.position -= start;
    compare("bounded", reading);

    compare("memory", read_from_octets(make, octets, expected));
    return problems;
}

// --- Writing

Written write(const serialization::BinarySerializable& object) {
    std::ostringstream os;
    SerializationContext ctx;
    const std::string error = message_of([&] { object.serialize_impl(os, ctx); });
    const std::string text = os.str();
    return {{text.begin(), text.end()}, error};
}

std::string check_round_trip(const Maker<Element>& make, const Element& element) {
    if (!element.is_dummy()) {
        const auto copy = make();
        const std::string refusal = message_of([&] { FieldReplay(FieldRecord(element), *copy); });
        const bool same =
            refusal.empty() && field_text(*copy) == field_text(element) && *copy == element;
        if (!same) {
            return field_text(*copy) + " made of " + field_text(element) + refusal;
        }
    }
    const auto [octets, error] = write(element);
    if (!error.empty()) {
        return octets.empty() && error == refusal_to_write(element) ? "" : "refused: " + error;
    }
    const bool promises_more = promises_one_octet_more(element);
    if (length_of(element, octets.size() + (promises_more ? 1 : 0)) != element.get_length()) {
        return "get_length() is " + std::to_string(element.get_length()) + ", written are " +
               to_hex(octets);
    }
    if (loses_its_last_subelement(element)) {
        return {};
    }
    const auto again = read_from_memory(make(), octets);
    const auto state = promises_more ? std::ios_base::failbit : std::ios_base::goodbit;
    if (!again.ok() || again.state != state || !(*again.object == element) ||
        !(element == *again.object)) {
        return to_hex(octets) + " is not read as what was written: " + again.error;
    }
    return write(*again.object).octets == octets ? "" : "written differently again";
}

std::string check_round_trip(const Frame& frame) {
    const auto* eht = frame.get_optional_element<ieee802_11::IEEE802_11_EHTCapabilities>();
    const auto* non_inheritance =
        frame.get_optional_element_by_extended_id(ExtensionID::NON_INHERITANCE);
    const auto [octets, error] = write(frame);
    if (!error.empty()) {
        // One of its elements must be the reason.
        const std::array<const Element*, 4> elements{
            frame.get_optional_element_by_id(ElementID::SUPPORTED_RATES),
            frame.get_optional_element_by_id(ElementID::EXTENDED_SUPPORTED_RATES),
            frame.get_optional_element_by_id(ElementID::RSN), non_inheritance};
        const bool refused =
            std::ranges::any_of(elements, [&error = error](const Element* element) {
                return element != nullptr && write(*element).error == error;
            });
        return refused ? "" : "refused: " + error;
    }
    if (octets.size() + (non_inheritance != nullptr ? 1 : 0) != frame.get_length()) {
        return "get_length() is " + std::to_string(frame.get_length()) + ", written are " +
               std::to_string(octets.size());
    }
    const auto again = read_from_memory(std::make_unique<Frame>(), octets);
    // Behind a Non-Inheritance element the frame is read one octet off.
    if (non_inheritance != nullptr) {
        return {};
    }
    // HE Capabilities that came behind the EHT Capabilities give them another shape.
    if (eht != nullptr) {
        const auto shaped =
            frame.get_optional_elements().create_extended_element(ExtensionID::EHT_CAPABILITIES);
        SerializationContext ctx;
        const Octets own = write(*eht).octets;
        if (!message_of([&] { shaped->deserialize(own, ctx); }).empty() || !(*shaped == *eht)) {
            return {};
        }
    }
    return again.ok() && *again.object == frame && frame == *again.object &&
                   write(*again.object).octets == octets
               ? ""
               : "not read as what was written: " + again.error;
}

template Reading<Element> read_from_memory(std::unique_ptr<Element>, std::span<const std::uint8_t>);
template Reading<Frame> read_from_memory(std::unique_ptr<Frame>, std::span<const std::uint8_t>);
template Reading<ieee802_11::IEEE802_11_BeaconReport> read_from_memory(
    std::unique_ptr<ieee802_11::IEEE802_11_BeaconReport>, std::span<const std::uint8_t>);
template std::string check_ways_of_reading_agree(const Maker<Element>&, const Octets&);
template std::string check_ways_of_reading_agree(const Maker<Frame>&, const Octets&);
template std::string check_ways_of_reading_agree(const Maker<ieee802_11::IEEE802_11_BeaconReport>&,
                                                 const Octets&);

}  // namespace nuv::test

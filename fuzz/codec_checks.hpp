// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ios>
#include <istream>
#include <memory>
#include <span>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "internal/byte_cursor.hpp"
#include "nuv/ieee802_11/ieee802_11_assoc_request_frame.hpp"
#include "nuv/ieee802_11/ieee802_11_eht_capabilities.hpp"
#include "nuv/ieee802_11/ieee802_11_eht_operation.hpp"
#include "nuv/ieee802_11/ieee802_11_field_source.hpp"
#include "nuv/ieee802_11/ieee802_11_field_visitor.hpp"
#include "nuv/ieee802_11/ieee802_11_measurement_report.hpp"
#include "nuv/ieee802_11/ieee802_11_neighbor_report.hpp"
#include "nuv/limited_istream.hpp"
#include "nuv/mem_buf.hpp"
#include "tests/support/codecs.hpp"

/// What holds for everything that is read from octets and written as octets, for tests and for
/// fuzzing: each check returns what is wrong, nothing if all is well. An exception of another kind
/// than SerializationException passes through.
namespace nuv::test {

using Element = ieee802_11::IEEE802_11_Element_Base;
using ElementPtr = std::unique_ptr<Element>;
using ElementID = ieee802_11::IEEE802_11_Element_ID;
using ExtensionID = ieee802_11::IEEE802_11_Element_ID_Extension;
using Frame = ieee802_11::AssocRequestFrame;

/// A new element of the class for this ID; `maps` as Sample::maps.
inline ElementPtr make_element(ElementID id, ExtensionID extension, std::uint8_t maps) {
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

// --- Where writing is deliberately not the inverse of reading. Everything else comes back equal:
// bodies that are written as zeros, zero capabilities and trailing zeros that are not written
// change the octets, and what they are read as stays the same.

/// A Non-Inheritance element's Length promises one octet more than is written.
inline bool promises_one_octet_more(const Element& element) {
    return !element.is_dummy() && element.get_type() == ElementID::ELEMENT_ID_EXTENSION &&
           element.get_extension_type() == ExtensionID::NON_INHERITANCE;
}

/// What get_length() says of an element written in `size` octets: a measurement report keeps it in 8
/// bits.
inline std::size_t length_of(const Element& element, std::size_t size) {
    return element.get_type() == ElementID::MEASUREMENT_REPORT ? size % 256 : size;
}

/// A neighbor report whose last subelement has no body is not read back: such a one is not looked at.
inline bool loses_its_last_subelement(const Element& element) {
    const auto* report = dynamic_cast<const ieee802_11::IEEE802_11_NeighborReport*>(&element);
    return report != nullptr && !report->sub_elements().empty() &&
           report->sub_elements().back()->get_length() == 2;
}

/// With what text an element that was read may be refused: lists of rates that were empty, an RSN
/// element of more than 255 octets with its header, a Non-Inheritance element whose promise is too much.
inline std::string_view refusal_to_write(const Element& element) {
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

/// The elements in an element are written by their classes when it is made of its fields, which may
/// give other octets, or be refused.
inline bool holds_elements(const Element& element) {
    return element.get_extension_type() == ExtensionID::MULTI_LINK ||
           element.get_type() == ElementID::NEIGHBOR_REPORT;
}

// --- Reading

/// The fields of an element as text.
class FieldText : public ieee802_11::IEEE802_11_FieldVisitor {
public:
    explicit FieldText(const Element& element) { element.visit_fields(*this); }

    void number(std::string_view name, std::uint64_t value) override {
        text(name, std::to_string(value));
    }
    void text(std::string_view name, std::string_view value) override {
        ((text_ += name) += '=') += value;
        text_ += ' ';
    }
    void octets(std::string_view name, std::span<const std::uint8_t> value) override {
        text(name, to_hex({value.begin(), value.end()}));
    }
    void open_list(std::string_view name) override { (text_ += name) += "=["; }
    void close_list() override { text_ += "] "; }
    void open_object(std::string_view name) override { (text_ += name) += "={"; }
    void close_object() override { text_ += "} "; }

    const std::string& str() const { return text_; }

private:
    std::string text_;
};

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
    void open_object(std::string_view name) override { take('{', name); }
    void close_object() override { take('}', {}); }
    [[noreturn]] void fail(std::string_view message) override {
        throw serialization::SerializationException(std::string(message));
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
};

/// A stream buffer that has one octet at hand and does not know how many follow, as a file's or a
/// socket's may.
class TrickleBuf : public std::streambuf {
public:
    explicit TrickleBuf(std::span<const std::uint8_t> octets)
        : text_(octets.begin(), octets.end()) {
        stand_at(0);
    }

protected:
    int_type underflow() override {
        if (gptr() == text_.data() + text_.size()) {
            return traits_type::eof();
        }
        setg(eback(), gptr(), gptr() + 1);
        return traits_type::to_int_type(*gptr());
    }
    pos_type seekoff(off_type offset, std::ios_base::seekdir from,
                     std::ios_base::openmode which) override {
        const auto size = static_cast<off_type>(text_.size());
        const off_type target = offset + (from == std::ios_base::beg   ? 0
                                          : from == std::ios_base::cur ? gptr() - eback()
                                                                       : size);
        if ((which & std::ios_base::in) == 0 || target < 0 || target > size) {
            return pos_type(off_type(-1));
        }
        stand_at(target);
        return pos_type(target);
    }
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override {
        return seekoff(off_type(position), std::ios_base::beg, which);
    }

private:
    void stand_at(off_type at) { setg(text_.data(), text_.data() + at, text_.data() + at); }

    std::string text_;
};

/// An object that was read, and what a caller can observe besides.
template <class T>
struct Reading {
    std::unique_ptr<T> object;
    std::string error;  // the exception's text, empty without one
    std::ios_base::iostate state = std::ios_base::goodbit;
    std::streamoff position = 0;

    bool ok() const { return error.empty(); }
    Reading like(std::unique_ptr<T> other) const { return {std::move(other), {}, state, position}; }
};

template <class T>
Reading<T> read_from(std::unique_ptr<T> object, std::istream& is) {
    serialization::SerializationContext ctx;
    Reading<T> reading{std::move(object), {}};
    reading.error = message_of([&] { reading.object->deserialize_impl(is, ctx); });
    reading.state = is.rdstate();
    reading.position = is.rdbuf()->pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    return reading;
}

template <class T>
Reading<T> read_from_memory(std::unique_ptr<T> object, std::span<const std::uint8_t> octets) {
    MemBuf buffer(octets);
    std::istream is(&buffer);
    return read_from(std::move(object), is);
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
    if constexpr (std::is_same_v<T, Element>) {
        const FieldText fields_a(*a.object);
        const FieldText fields_b(*b.object);
        if (fields_a.str() != fields_b.str()) {
            return fields_a.str() + " against " + fields_b.str();
        }
    }
    return {};
}

/// Reads `octets` as the object that `make()` makes, in every way there is, and checks that no
/// difference can be seen: text of the exception, fields, state and position.
template <class Make>
std::string check_ways_of_reading_agree(const Make& make, const Octets& octets) {
    const auto expected = read_from_memory(make(), octets);
    const auto compare = [&](const char* way, const auto& reading) {
        const std::string found = difference(expected, reading);
        return found.empty() ? found : std::string(way) + ": " + found;
    };

    std::stringstream string_stream(to_string(octets));
    TrickleBuf trickle(octets);
    std::istream trickling(&trickle);
    // A range of a stream that goes on behind it.
    std::stringstream parent("before" + to_string(octets) + "behind");
    constexpr std::streamoff start = 6;
    parent.seekg(start);
    LimitedIStream bounded(parent, static_cast<std::int64_t>(octets.size()));

    auto reading = read_from(make(), string_stream);
    std::string problem = compare("string stream", reading);
    if (problem.empty()) {
        problem = compare("trickle", read_from(make(), trickling));
    }
    if (problem.empty()) {
        reading = read_from(make(), bounded);
        reading.position -= start;
        problem = compare("bounded", reading);
    }
    if (!problem.empty()) {
        return problem;
    }

    serialization::SerializationContext ctx;
    auto memory = expected.like(make());
    auto state = expected.state;
    memory.error = message_of([&] { state = memory.object->deserialize(octets, ctx); });
    memory.state = memory.ok() ? state : expected.state;
    if constexpr (requires(impl::ByteCursor & cursor) { make()->deserialize_from(cursor, ctx); }) {
        // Where it stops after an exception only the frame that holds the element sees.
        impl::ByteCursor cursor(octets);
        message_of([&] { memory.object->deserialize_from(cursor, ctx); });
        memory.state = cursor.rdstate();
        memory.position = static_cast<std::streamoff>(cursor.consumed());
    }
    return compare("memory", memory);
}

// --- Writing

struct Written {
    Octets octets;
    std::string error;  // the exception's text, empty without one
};

template <class T>
Written write(const T& object) {
    std::ostringstream os;
    serialization::SerializationContext ctx;
    Written written;
    written.error = message_of([&] { object.serialize_impl(os, ctx); });
    const std::string text = os.str();
    written.octets.assign(text.begin(), text.end());
    return written;
}

/// Checks that an element which was read is equal to the one made of its fields, is written, in as
/// many octets as it says, and that these are read as an equal element and written the same again.
template <class Make>
std::string check_round_trip(const Make& make, const Element& element) {
    if (!element.is_dummy()) {
        const ElementPtr copy = make();
        const std::string refusal = message_of([&] { FieldReplay(FieldRecord(element), *copy); });
        const bool same = refusal.empty() && FieldText(*copy).str() == FieldText(element).str() &&
                          (*copy == element || holds_elements(element));
        if (!same && (refusal.empty() || !holds_elements(element))) {
            return FieldText(*copy).str() + " made of " + FieldText(element).str() + refusal;
        }
    }
    const Written written = write(element);
    if (!written.error.empty()) {
        return written.octets.empty() && written.error == refusal_to_write(element)
                   ? std::string()
                   : "refused: " + written.error;
    }
    const std::size_t promised = promises_one_octet_more(element) ? 1 : 0;
    if (length_of(element, written.octets.size() + promised) != element.get_length()) {
        return "get_length() is " + std::to_string(element.get_length()) + ", written are " +
               to_hex(written.octets);
    }
    if (loses_its_last_subelement(element)) {
        return {};
    }
    const auto again = read_from_memory(make(), written.octets);
    const auto state = promised == 1 ? std::ios_base::failbit : std::ios_base::goodbit;
    if (!again.ok() || again.state != state || !(*again.object == element) ||
        !(element == *again.object)) {
        return to_hex(written.octets) + " is not read as what was written: " + again.error;
    }
    return write(*again.object).octets == written.octets ? "" : "written differently again";
}

/// The same for a frame.
inline std::string check_round_trip(const Frame& frame) {
    const auto* eht = frame.get_optional_element<ieee802_11::IEEE802_11_EHTCapabilities>();
    const auto* non_inheritance =
        frame.get_optional_element_by_extended_id(ExtensionID::NON_INHERITANCE);
    const Written written = write(frame);
    if (!written.error.empty()) {
        // One of its elements must be the reason.
        for (const ElementID id :
             {ElementID::SUPPORTED_RATES, ElementID::EXTENDED_SUPPORTED_RATES, ElementID::RSN}) {
            const Element* element = frame.get_optional_element_by_id(id);
            if (element != nullptr && write(*element).error == written.error) {
                return {};
            }
        }
        return non_inheritance != nullptr && write(*non_inheritance).error == written.error
                   ? std::string()
                   : "refused: " + written.error;
    }
    if (written.octets.size() + (non_inheritance != nullptr ? 1 : 0) != frame.get_length()) {
        return "get_length() is " + std::to_string(frame.get_length()) + ", written are " +
               std::to_string(written.octets.size());
    }
    const auto again = read_from_memory(std::make_unique<Frame>(), written.octets);
    // Behind a Non-Inheritance element the frame is read one octet off.
    if (non_inheritance != nullptr) {
        return {};
    }
    // HE Capabilities that came behind the EHT Capabilities give them another shape.
    if (eht != nullptr) {
        const auto shaped =
            frame.get_optional_elements().create_extended_element(ExtensionID::EHT_CAPABILITIES);
        serialization::SerializationContext ctx;
        const Octets octets = write(*eht).octets;
        if (!message_of([&] { shaped->deserialize(octets, ctx); }).empty() || !(*shaped == *eht)) {
            return {};
        }
    }
    return again.ok() && *again.object == frame && frame == *again.object &&
                   write(*again.object).octets == written.octets
               ? std::string()
               : "not read as what was written: " + again.error;
}

}  // namespace nuv::test

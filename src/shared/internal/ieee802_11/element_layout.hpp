// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <bitset>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <ostream>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

#include "internal/byte_cursor.hpp"
#include "nuv/binary_serializable_type.hpp"
#include "nuv/byte_order.hpp"
#include "nuv/ieee802_11/ieee802_11_bits.hpp"
#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/ieee802_11/ieee802_11_field_source.hpp"
#include "nuv/ieee802_11/ieee802_11_field_visitor.hpp"

/// The vocabulary in which an element's body is declared: a list of fields, as types, in wire
/// order.
///
///     struct IEEE802_11_SomeElement::Layout {
///         static bool has_extra(const IEEE802_11_SomeElement& e) { return e.bits_[3]; }
///         using fields = Fields<Always<"bits", &IEEE802_11_SomeElement::bits_>,
///                               When<Always<"extra", &IEEE802_11_SomeElement::extra_>, has_extra>,
///                               Rest<"tail", &IEEE802_11_SomeElement::tail_>>;
///     };
///     template class IEEE802_11_LayoutElement<IEEE802_11_SomeElement, ...>;
///
/// Optionally the layout has `check_length(std::uint8_t)`, which throws what forbids to read an
/// element with that Length octet, and `check_fields(const E&)`, which throws what forbids to
/// write.
namespace nuv::impl::layout {

using ieee802_11::IEEE802_11_Bits;
using ieee802_11::IEEE802_11_FieldSource;
using ieee802_11::IEEE802_11_FieldVisitor;
using serialization::BinarySerializableType;
using serialization::SerializationContext;

/// A field's name as a template argument.
template <std::size_t N>
struct Name {
    explicit(false) consteval Name(const char (&literal)[N]) { std::copy_n(literal, N, text); }
    std::string_view view() const { return {text, N - 1}; }
    char text[N]{};
};

template <class Pointer>
struct MemberOf;
template <class Class, class Value>
struct MemberOf<Value Class::*> {
    using type = Value;
};
template <auto Member>
using MemberType = typename MemberOf<decltype(Member)>::type;

/// What has a text form: addresses, suites.
template <class T>
concept TextValue = requires(T value, std::string_view text) {
    { value.to_string() } -> std::same_as<std::string>;
    { value.parse_string(text) } -> std::same_as<bool>;
};

template <class T>
concept NumberValue = std::unsigned_integral<T> || std::is_enum_v<T>;

/// A number as the standard means it instead of as this library keeps it, or the other way round. An
/// enumeration has one octet.
template <NumberValue T>
constexpr T standard_value(T value) {
    if constexpr (std::is_enum_v<T>) {
        return value;
    } else {
        return swap_octets(value);
    }
}

/// Octets that mean something each, side by side: a list of numbers.
template <std::size_t N>
void visit_numbers(IEEE802_11_FieldVisitor& visitor, std::string_view name,
                   const std::array<std::uint8_t, N>& numbers) {
    visitor.open_list(name);
    for (const std::uint8_t number : numbers) {
        visitor.number({}, number);
    }
    visitor.close_list();
}

template <std::size_t N>
std::array<std::uint8_t, N> assign_numbers(IEEE802_11_FieldSource& source, std::string_view name) {
    std::array<std::uint8_t, N> numbers{};
    if (source.open_list(name) != N) {
        source.fail(std::string("not a list of ") + std::to_string(N));
    }
    for (std::uint8_t& number : numbers) {
        number = static_cast<std::uint8_t>(source.number({}, 8));
    }
    source.close_list();
    return numbers;
}

/// Shows what a number beside it means; nothing without a text.
inline void visit_meaning(IEEE802_11_FieldVisitor& visitor, std::string_view name,
                          std::string_view meaning) {
    if (!meaning.empty()) {
        visitor.text(name, meaning);
    }
}

/// Passes over it: the number counts.
inline void skip_meaning(IEEE802_11_FieldSource& source, std::string_view name) {
    if (source.has(name)) {
        source.text(name);
    }
}

/// An enumeration whose numbers have texts.
template <class T>
concept CodeValue = std::is_enum_v<T> && requires(std::ostream& os, T value) {
    os << value;
};

/// Under which name the text of a code stands.
inline std::string meaning_of(std::string_view code) { return std::string(code) + "_name"; }

/// Shows one value: numbers least significant octet first as the standard has them, which is the
/// reverse of how this library writes them, a code with its text behind it; what has a text form as
/// text; a group of numbers (a WireForm with `is_group`) as a list; everything else as its octets.
template <class T>
void visit_value(IEEE802_11_FieldVisitor& visitor, std::string_view name, const T& value) {
    if constexpr (TextValue<T>) {
        visitor.text(name, value.to_string());
    } else if constexpr (NumberValue<T>) {
        visitor.number(name, static_cast<std::uint64_t>(standard_value(value)));
        if constexpr (CodeValue<T>) {
            std::ostringstream text;
            text << value;
            visit_meaning(visitor, meaning_of(name), text.view());
        }
    } else {
        std::array<std::uint8_t, WireForm<T>::size> octets{};
        WireForm<T>::encode(value, octets.data());
        if constexpr (requires { WireForm<T>::is_group; }) {
            visit_numbers(visitor, name, octets);
        } else {
            visitor.octets(name, octets);
        }
    }
}

/// Takes one value, as visit_value() shows it.
template <class T>
void assign_value(IEEE802_11_FieldSource& source, std::string_view name, T& value) {
    if constexpr (TextValue<T>) {
        if (!value.parse_string(source.text(name))) {
            source.fail(std::string("not of the form ") + T().to_string());
        }
    } else if constexpr (NumberValue<T>) {
        value = standard_value(static_cast<T>(source.number(name, 8 * sizeof(T))));
        if constexpr (CodeValue<T>) {
            skip_meaning(source, meaning_of(name));
        }
    } else {
        std::array<std::uint8_t, WireForm<T>::size> octets{};
        if constexpr (requires { WireForm<T>::is_group; }) {
            octets = assign_numbers<octets.size()>(source, name);
        } else {
            const auto given = source.octets(name);
            if (given.size() != octets.size()) {
                source.fail(std::string("not ") + std::to_string(octets.size()) + " octets");
            }
            std::copy(given.begin(), given.end(), octets.begin());
        }
        WireForm<T>::decode(octets.data(), octets.size(), value);
    }
}

template <class List>
void visit_list(IEEE802_11_FieldVisitor& visitor, std::string_view name, const List& list) {
    visitor.open_list(name);
    for (const auto& value : list) {
        visit_value(visitor, {}, value);
    }
    visitor.close_list();
}

template <class List>
void assign_list(IEEE802_11_FieldSource& source, std::string_view name, List& list) {
    list.clear();
    for (std::size_t count = source.open_list(name); count > 0; --count) {
        typename List::value_type value{};
        assign_value(source, {}, value);
        list.push_back(value);
    }
    source.close_list();
}

/// Shows bits by their names.
inline void visit_bits(IEEE802_11_FieldVisitor& visitor, std::span<const IEEE802_11_Bits> names,
                       std::span<const std::uint8_t> octets) {
    for (const IEEE802_11_Bits& bits : names) {
        const std::uint8_t value = bits.get(octets[bits.octet]);
        visitor.number(bits.name, bits.is_signed
                                      ? static_cast<std::uint64_t>(static_cast<std::int8_t>(value))
                                      : value);
    }
}

/// Takes them, as visit_bits() shows them.
inline void assign_bits(IEEE802_11_FieldSource& source, std::span<const IEEE802_11_Bits> names,
                        std::span<std::uint8_t> octets) {
    for (const IEEE802_11_Bits& bits : names) {
        const std::uint64_t value = source.number(bits.name, bits.is_signed ? 64 : bits.count);
        const auto octet = static_cast<std::uint8_t>(value);
        if (bits.is_signed &&
            static_cast<std::uint64_t>(static_cast<std::int8_t>(octet)) != value) {
            source.fail("not a signed octet");
        }
        bits.set(octets[bits.octet], octet);
    }
}

/// For a body every octet of which belongs to a field: throws the octet's SerializationException if
/// the input ends before the body does.
inline void require_whole(const ByteCursor& body) {
    if (!body.whole()) {
        throw serialization::SerializationException(WireForm<std::uint8_t>::texts.deserialize);
    }
}

template <class List>
void read_list(ByteCursor& body, std::size_t count, List& list) {
    if constexpr (std::same_as<typename List::value_type, std::uint8_t>) {
        const auto octets = body.read_octets(count);
        list.assign(octets.begin(), octets.end());
        if (octets.size() != count) {
            throw serialization::SerializationException(WireForm<std::uint8_t>::texts.deserialize);
        }
    } else {
        list.clear();
        for (; count > 0; --count) {
            typename List::value_type value{};
            body.read(value);
            list.push_back(value);
        }
    }
}

/// A field that is always there.
template <Name name, auto Member>
struct Always {
    using Value = MemberType<Member>;

    static constexpr std::uint32_t size = WireForm<Value>::size;

    template <class E>
    static std::uint32_t length(const E& /*element*/) {
        return size;
    }
    template <class E>
    static void write(const E& element, std::ostream& os, SerializationContext& ctx) {
        BinarySerializableType<Value>::serialize(os, ctx, element.*Member);
    }
    template <class E>
    static void read(E& element, ByteCursor& body) {
        body.read(element.*Member);
    }
    template <class E>
    static void clear(E& element) {
        element.*Member = {};
    }
    template <class E>
    static bool equal(const E& a, const E& b) {
        return a.*Member == b.*Member;
    }
    template <class E>
    static void visit(const E& element, IEEE802_11_FieldVisitor& visitor) {
        visit_value(visitor, name.view(), element.*Member);
    }
    template <class E>
    static void assign(E& element, IEEE802_11_FieldSource& source) {
        assign_value(source, name.view(), element.*Member);
    }
};

/// An octet whose bits have names of their own; `Names` is an array of them.
template <auto Member, const auto& Names>
struct Named : Always<"", Member> {
    template <class E>
    static void visit(const E& element, IEEE802_11_FieldVisitor& visitor) {
        visit_bits(visitor, Names, {&(element.*Member), 1});
    }
    template <class E>
    static void assign(E& element, IEEE802_11_FieldSource& source) {
        assign_bits(source, Names, {&(element.*Member), 1});
    }
};

/// An integer least significant octet first, as the standard has it.
template <Name name, auto Member, std::size_t octets = sizeof(MemberType<Member>)>
struct LittleEndian : Always<name, Member> {
    using Value = MemberType<Member>;
    using Bits = std::bitset<8 * octets>;  // its bit 0 is the first octet's

    static constexpr std::uint32_t size = octets;

    template <class E>
    static std::uint32_t length(const E& /*element*/) {
        return size;
    }
    template <class E>
    static void write(const E& element, std::ostream& os, SerializationContext& ctx) {
        BinarySerializableType<Bits>::serialize(os, ctx, Bits(element.*Member));
    }
    template <class E>
    static void read(E& element, ByteCursor& body) {
        Bits bits;
        body.read(bits);
        element.*Member = static_cast<Value>(bits.to_ullong());
    }
    template <class E>
    static void visit(const E& element, IEEE802_11_FieldVisitor& visitor) {
        visitor.number(name.view(), element.*Member);
    }
    template <class E>
    static void assign(E& element, IEEE802_11_FieldSource& source) {
        element.*Member = static_cast<Value>(source.number(name.view(), 8 * octets));
    }
};

/// A field that is there when the fields before it say so. Absent on reading, it becomes zero.
template <class Field, auto Present>
struct When {
    template <class E>
    static std::uint32_t length(const E& element) {
        return Present(element) ? Field::length(element) : 0;
    }
    template <class E>
    static void write(const E& element, std::ostream& os, SerializationContext& ctx) {
        if (Present(element)) {
            Field::write(element, os, ctx);
        }
    }
    template <class E>
    static void read(E& element, ByteCursor& body) {
        if (Present(element)) {
            Field::read(element, body);
        } else {
            Field::clear(element);
        }
    }
    template <class E>
    static void clear(E& element) {
        Field::clear(element);
    }
    template <class E>
    static bool equal(const E& a, const E& b) {
        return Field::equal(a, b);
    }
    template <class E>
    static void visit(const E& element, IEEE802_11_FieldVisitor& visitor) {
        if (Present(element)) {
            Field::visit(element, visitor);
        }
    }
    template <class E>
    static void assign(E& element, IEEE802_11_FieldSource& source) {
        if (Present(element)) {
            Field::assign(element, source);
        } else {
            Field::clear(element);
        }
    }
};

/// A list that takes what remains of the body.
template <Name name, auto Member>
struct Rest {
    using List = MemberType<Member>;
    static constexpr std::size_t value_size = WireForm<typename List::value_type>::size;

    template <class E>
    static std::uint32_t length(const E& element) {
        return static_cast<std::uint32_t>((element.*Member).size() * value_size);
    }
    template <class E>
    static void write(const E& element, std::ostream& os, SerializationContext& ctx) {
        BinarySerializableType<List>::serialize(os, ctx, element.*Member);
    }
    template <class E>
    static void read(E& element, ByteCursor& body) {
        read_list(body, body.remaining() / value_size, element.*Member);
    }
    template <class E>
    static void clear(E& element) {
        (element.*Member).clear();
    }
    template <class E>
    static bool equal(const E& a, const E& b) {
        return a.*Member == b.*Member;
    }
    template <class E>
    static void visit(const E& element, IEEE802_11_FieldVisitor& visitor) {
        visit_list(visitor, name.view(), element.*Member);
    }
    template <class E>
    static void assign(E& element, IEEE802_11_FieldSource& source) {
        assign_list(source, name.view(), element.*Member);
    }
};

/// A list behind a count octet.
template <Name name, auto Member>
struct Counted {
    using Items = Rest<name, Member>;

    template <class E>
    static std::uint32_t length(const E& element) {
        return 1 + Items::length(element);
    }
    template <class E>
    static void write(const E& element, std::ostream& os, SerializationContext& ctx) {
        BinarySerializableType<std::uint8_t>::serialize(
            os, ctx, static_cast<std::uint8_t>((element.*Member).size()));
        Items::write(element, os, ctx);
    }
    template <class E>
    static void read(E& element, ByteCursor& body) {
        std::uint8_t count = 0;
        body.read(count);
        read_list(body, count, element.*Member);
    }
    template <class E>
    static bool equal(const E& a, const E& b) {
        return Items::equal(a, b);
    }
    template <class E>
    static void visit(const E& element, IEEE802_11_FieldVisitor& visitor) {
        Items::visit(element, visitor);
    }
    template <class E>
    static void assign(E& element, IEEE802_11_FieldSource& source) {
        Items::assign(element, source);
    }
};

template <class Field>
consteval std::uint32_t fixed_size() {
    if constexpr (requires { Field::size; }) {
        return Field::size;
    } else {
        return 0;
    }
}

/// The fields of a body in wire order, and what follows from them.
template <class... Field>
struct Fields {
    /// Octets of the fields that are always there.
    static constexpr std::uint32_t fixed_length = (std::uint32_t{0} + ... + fixed_size<Field>());

    template <class E>
    static std::uint32_t length(const E& element) {
        return (std::uint32_t{0} + ... + Field::length(element));
    }
    template <class E>
    static void write(const E& element, std::ostream& os, SerializationContext& ctx) {
        (Field::write(element, os, ctx), ...);
    }
    template <class E>
    static void read(E& element, ByteCursor& body) {
        (Field::read(element, body), ...);
    }
    template <class E>
    static bool equal(const E& a, const E& b) {
        return (Field::equal(a, b) && ...);
    }
    template <class E>
    static void visit(const E& element, IEEE802_11_FieldVisitor& visitor) {
        (Field::visit(element, visitor), ...);
    }
    template <class E>
    static void assign(E& element, IEEE802_11_FieldSource& source) {
        (Field::assign(element, source), ...);
    }
};

/// Fields of which none may reach beyond the element's Length: "Invalid length". The fields before
/// one say how long it is.
template <class... Field>
struct Within : Fields<Field...> {
    template <class E>
    static void read(E& element, ByteCursor& body) {
        (read_field<Field>(element, body), ...);
    }

private:
    template <class One, class E>
    static void read_field(E& element, ByteCursor& body) {
        if (One::length(element) > body.remaining()) {
            throw serialization::SerializationException("Invalid length");
        }
        One::read(element, body);
    }
};

/// Fields behind an octet that counts itself and them. What the octet counts beyond the fields that
/// are known belongs to `Surplus`, a list of octets.
template <class Surplus, class... Field>
struct SelfCounted {
    using Known = Fields<Field...>;

    template <class E>
    static std::uint32_t length(const E& element) {
        return 1 + Known::length(element) + Surplus::length(element);
    }
    template <class E>
    static void write(const E& element, std::ostream& os, SerializationContext& ctx) {
        BinarySerializableType<std::uint8_t>::serialize(os, ctx,
                                                        static_cast<std::uint8_t>(length(element)));
        Known::write(element, os, ctx);
        Surplus::write(element, os, ctx);
    }
    /// Throws SerializationException "Invalid length" if the octet counts less than the known fields
    /// or more than the body has.
    template <class E>
    static void read(E& element, ByteCursor& body) {
        std::uint8_t count = 0;
        body.read(count);
        if (count < 1 + Known::length(element) || count - 1U > body.remaining()) {
            throw serialization::SerializationException("Invalid length");
        }
        ByteCursor block = body.enter(count - 1U);
        Known::read(element, block);
        Surplus::read(element, block);
        body.leave(block);
    }
    template <class E>
    static void clear(E& element) {
        (Field::clear(element), ...);
        Surplus::clear(element);
    }
    template <class E>
    static bool equal(const E& a, const E& b) {
        return Known::equal(a, b) && Surplus::equal(a, b);
    }
    template <class E>
    static void visit(const E& element, IEEE802_11_FieldVisitor& visitor) {
        Known::visit(element, visitor);
        Surplus::visit(element, visitor);
    }
    template <class E>
    static void assign(E& element, IEEE802_11_FieldSource& source) {
        Known::assign(element, source);
        Surplus::assign(element, source);
    }
};

}  // namespace nuv::impl::layout

namespace nuv::ieee802_11 {
namespace layout = impl::layout;
}

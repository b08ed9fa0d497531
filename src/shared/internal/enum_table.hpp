// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

// The texts of an enumeration are one list of rows, EnumTexts<E>::rows, from which enum_to_string,
// string_to_enum and operator<< follow.
//
// Only a packed copy of the rows reaches the library: it holds no pointers, so it needs no
// relocation and its pages are shared by every process that loads the library. A search walks the
// rows: the longest list has 34.

namespace nuv::impl {

enum class RowKind : std::uint8_t {
    NAMED,     ///< one value; only these rows are read back
    UNNAMED,   ///< a range of values that share a text
    NUMBERED,  ///< a range of values, each with the text followed by its number in decimal
    REFUSED,   ///< a range of values that have none: std::invalid_argument(text)
};

struct ValueRange {
    std::uint8_t first;
    std::uint8_t last;
};

/// Range of the last row of every list: what no row before it covers.
inline constexpr ValueRange OTHERWISE{0, 255};

template <class E>
struct EnumRow {
    constexpr EnumRow(E value, std::string_view row_text)
        : values{static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value)},
          kind(RowKind::NAMED),
          text(row_text) {}
    constexpr EnumRow(ValueRange range, std::string_view row_text,
                      RowKind row_kind = RowKind::UNNAMED)
        : values(range), kind(row_kind), text(row_text) {}

    ValueRange values;
    RowKind kind;
    std::string_view text;
};

/// Specialised for each enumeration with `rows`: the named ones first, in ascending order,
/// OTHERWISE last. The first row that covers a value gives its text.
template <class E>
struct EnumTexts;

template <class Rows>
consteval bool values_ascend(const Rows& rows) {
    return std::ranges::adjacent_find(rows, [](const auto& a, const auto& b) {
               return b.kind == RowKind::NAMED &&
                      (a.kind != RowKind::NAMED || a.values.first >= b.values.first);
           }) == std::ranges::end(rows);
}

template <class Rows>
consteval bool texts_differ(const Rows& rows) {
    const auto named = [&](std::string_view text) {
        return std::ranges::count_if(
            rows, [&](const auto& row) { return row.kind == RowKind::NAMED && row.text == text; });
    };
    return std::ranges::all_of(rows, [&](const auto& row) { return named(row.text) <= 1; });
}

template <class Rows>
consteval bool texts_fit(const Rows& rows) {
    return std::ranges::all_of(rows, [](const auto& row) { return row.text.size() <= 255; });
}

template <class Rows>
consteval bool every_value_has_text(const Rows& rows) {
    const auto& last = *std::ranges::rbegin(rows);
    return last.values.first == OTHERWISE.first && last.values.last == OTHERWISE.last;
}

/// Octets before the text of a packed row: first value, last value, kind, length of the text.
inline constexpr std::size_t PACKED_ROW_HEAD = 4;

template <class Rows>
consteval std::size_t packed_size(const Rows& rows) {
    std::size_t size = 0;
    for (const auto& row : rows) {
        size += PACKED_ROW_HEAD + row.text.size();
    }
    return size;
}

template <class E>
consteval auto pack_rows() {
    constexpr auto& rows = EnumTexts<E>::rows;
    static_assert(values_ascend(rows), "a value stands twice or out of order");
    static_assert(texts_differ(rows), "a text stands twice");
    static_assert(texts_fit(rows), "a text is too long");
    static_assert(every_value_has_text(rows), "the last row is not OTHERWISE");
    std::array<char, packed_size(rows)> packed{};
    auto* out = packed.data();
    for (const auto& row : rows) {
        *out++ = static_cast<char>(row.values.first);
        *out++ = static_cast<char>(row.values.last);
        *out++ = static_cast<char>(row.kind);
        *out++ = static_cast<char>(row.text.size());
        out = std::ranges::copy(row.text, out).out;
    }
    return packed;
}

/// The rows of an enumeration without its type, and one function for each direction.
class EnumTable {
public:
    template <class E>
    static EnumTable of() {
        static constexpr auto packed = pack_rows<E>();
        return EnumTable({packed.data(), packed.size()});
    }

    /// Throws std::invalid_argument for a value of a REFUSED row.
    std::string text(std::uint8_t value) const;
    std::ostream& write(std::ostream& os, std::uint8_t value) const;
    std::optional<std::uint8_t> value(std::string_view text) const;

private:
    explicit EnumTable(std::string_view packed_rows) : packed_rows_(packed_rows) {}

    std::string_view packed_rows_;
};

template <class E>
std::string enum_text(E value) {
    return EnumTable::of<E>().text(static_cast<std::uint8_t>(value));
}

template <class E>
std::ostream& write_enum(std::ostream& os, E value) {
    return EnumTable::of<E>().write(os, static_cast<std::uint8_t>(value));
}

template <class E>
bool read_enum(std::string_view text, E& out) {
    const auto value = EnumTable::of<E>().value(text);
    if (value) {
        out = static_cast<E>(*value);
    }
    return value.has_value();
}

}  // namespace nuv::impl

// NOLINTBEGIN(bugprone-macro-parentheses): the argument is a type
/// Defines the text functions of an enumeration from its rows: output only, or all three.
#define NUV_DEFINE_ENUM_OUTPUT(Enum) \
    std::ostream& operator<<(std::ostream& os, Enum value) { return impl::write_enum(os, value); }
#define NUV_DEFINE_ENUM_TEXTS(Enum)                                           \
    NUV_DEFINE_ENUM_OUTPUT(Enum)                                              \
    std::string enum_to_string(Enum value) { return impl::enum_text(value); } \
    bool string_to_enum(std::string_view text, Enum& out) { return impl::read_enum(text, out); }
// NOLINTEND(bugprone-macro-parentheses)

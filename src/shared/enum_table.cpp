// SPDX-License-Identifier: Apache-2.0
#include "internal/enum_table.hpp"

#include <ostream>
#include <stdexcept>

namespace nuv::impl {
namespace {

struct PackedRow {
    ValueRange values;
    RowKind kind;
    std::string_view text;
};

PackedRow take_row(std::string_view& rows) {
    const auto octet = [&](std::size_t i) { return static_cast<std::uint8_t>(rows[i]); };
    const PackedRow row{{octet(0), octet(1)},
                        static_cast<RowKind>(octet(2)),
                        rows.substr(PACKED_ROW_HEAD, octet(3))};
    rows.remove_prefix(PACKED_ROW_HEAD + row.text.size());
    return row;
}

}  // namespace

std::string EnumTable::text(std::uint8_t value) const {
    std::string_view rest = packed_rows_;
    PackedRow row = take_row(rest);
    while (value < row.values.first || value > row.values.last) {
        row = take_row(rest);
    }
    std::string text(row.text);
    if (row.kind == RowKind::REFUSED) {
        throw std::invalid_argument(text);
    }
    if (row.kind == RowKind::NUMBERED) {
        text += std::to_string(value);
    }
    return text;
}

std::ostream& EnumTable::write(std::ostream& os, std::uint8_t value) const {
    return os << text(value);
}

std::optional<std::uint8_t> EnumTable::value(std::string_view text) const {
    for (std::string_view rest = packed_rows_; !rest.empty();) {
        const PackedRow row = take_row(rest);
        if (row.kind == RowKind::NAMED && row.text == text) {
            return row.values.first;
        }
    }
    return std::nullopt;
}

}  // namespace nuv::impl

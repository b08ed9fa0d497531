// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <system_error>

namespace nuv::impl {

struct ErrorRow {
    const char* message = "";
    int value = 0;
    std::errc condition{};  ///< 0: the error's own
};

/// An error category whose codes are the rows of a table.
class ErrorTable final : public std::error_category {
public:
    ErrorTable(const char* name, std::span<const ErrorRow> rows, const char* unknown) noexcept
        : name_(name), rows_(rows), unknown_(unknown) {}

    const char* name() const noexcept override { return name_; }

    std::string message(int value) const override {
        const ErrorRow* const row = find(value);
        return row != nullptr ? row->message : unknown_;
    }

    std::error_condition default_error_condition(int value) const noexcept override {
        const ErrorRow* const row = find(value);
        return row != nullptr && row->condition != std::errc{}
                   ? std::make_error_condition(row->condition)
                   : std::error_condition(value, *this);
    }

private:
    const ErrorRow* find(int value) const noexcept {
        for (const ErrorRow& row : rows_) {
            if (row.value == value) {
                return &row;
            }
        }
        return nullptr;
    }

    const char* name_;
    std::span<const ErrorRow> rows_;
    const char* unknown_;
};

}  // namespace nuv::impl

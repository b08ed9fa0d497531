// SPDX-License-Identifier: Apache-2.0
#include "nuv/tarvu_address.hpp"

#include <ostream>

#include "internal/no_valid_text.hpp"

namespace nuv {

namespace {

constexpr char SEPARATOR = '@';

bool is_name(std::string_view text) {
    return !text.empty() && text.size() <= TarvuAddress::MAX_NAME_LENGTH &&
           text.find_first_not_of(
               "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
               "_-.") == std::string_view::npos;
}

}  // namespace

TarvuAddress::TarvuAddress(TextArgument text) {
    if (!parse_string(text)) {
        impl::throw_no_valid_text(text, TYPE_NAME);
    }
}

TarvuAddress::TarvuAddress(TextArgument name, const std::optional<MACAddress>& device)
    : name_(name), device_(device) {
    if (!is_name(name)) {
        impl::throw_no_valid_text(name, "TarvuAddress name");
    }
}

bool TarvuAddress::parse_string(TextArgument text) {
    const std::size_t separator = text.find(SEPARATOR);
    const std::string_view name = text.substr(0, separator);
    std::optional<MACAddress> device;
    if (!is_name(name) || (separator != std::string_view::npos &&
                           !device.emplace().parse_string(text.substr(separator + 1)))) {
        return false;
    }
    name_ = name;
    device_ = device;
    return true;
}

std::string TarvuAddress::to_string() const {
    return device_ ? name_ + SEPARATOR + device_->to_string() : name_;
}

std::ostream& operator<<(std::ostream& os, const TarvuAddress& address) {
    return os << address.to_string();
}

}  // namespace nuv

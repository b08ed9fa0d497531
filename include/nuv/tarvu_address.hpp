// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

#include "nuv/export.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/text_argument.hpp"

namespace nuv {

/// Where a message is to go on the message bus: an endpoint by its name, of this device or of the
/// device that is given. Text: "name" or "name@AA:BB:CC:DD:EE:FF". Ordered by name, then by device,
/// this one first.
class NUV_EXPORT TarvuAddress {
public:
    static constexpr std::string_view TYPE_NAME = "TarvuAddress";
    static constexpr std::size_t MAX_NAME_LENGTH = 64;

    /// Throws std::invalid_argument when parse_string() would refuse `text`.
    explicit TarvuAddress(TextArgument text);
    /// Throws std::invalid_argument unless `name` is 1 to 64 ASCII letters, digits, "_", "-", ".".
    TarvuAddress(TextArgument name, const std::optional<MACAddress>& device);

    const std::string& get_name() const noexcept { return name_; }
    /// None for this device.
    const std::optional<MACAddress>& get_device() const noexcept { return device_; }

    /// Returns false, and stays what it was, for anything but the text form; hexadecimal digits may
    /// be lower case.
    bool parse_string(TextArgument text);
    std::string to_string() const;

    bool operator==(const TarvuAddress&) const = default;
    std::strong_ordering operator<=>(const TarvuAddress& other) const noexcept {
        const auto by_name = name_ <=> other.name_;
        return std::is_neq(by_name) ? by_name : device_ <=> other.device_;
    }

private:
    std::string name_;
    std::optional<MACAddress> device_;
};

NUV_EXPORT std::ostream& operator<<(std::ostream& os, const TarvuAddress& address);

}  // namespace nuv

template <>
struct std::hash<nuv::TarvuAddress> {
    std::size_t operator()(const nuv::TarvuAddress& address) const noexcept {
        return std::hash<std::string>()(address.get_name()) * 31 +
               std::hash<std::optional<nuv::MACAddress>>()(address.get_device());
    }
};

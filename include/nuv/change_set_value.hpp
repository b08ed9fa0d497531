// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bitset>
#include <cstdint>

#include "nuv/export.hpp"

namespace nuv {

/// Which members of a category have changed: bit i is member i.
class ChangeSetValue {
public:
    using Bits = std::bitset<32>;

    ChangeSetValue() = default;
    explicit(false) ChangeSetValue(Bits bits) noexcept : bits_(bits) {}

    const Bits& get_value() const noexcept { return bits_; }
    void set_value(Bits bits) noexcept { bits_ = bits; }

    bool operator==(const ChangeSetValue&) const = default;

private:
    Bits bits_;
};

}  // namespace nuv

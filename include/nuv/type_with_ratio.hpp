// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstdint>
#include <ratio>
#include <string>

#include "nuv/json_serializable_type.hpp"

namespace nuv {

/// A count of a unit that is `Ratio` times one Hz (or one bit per second). Units do not mix by
/// themselves; ratio_cast() converts. Arithmetic wraps and overflows as that of T does.
template <typename T, typename Ratio>
class TypeWithRatio {
public:
    using rep = T;
    using ratio = Ratio;

    constexpr TypeWithRatio() = default;
    constexpr explicit TypeWithRatio(T count) noexcept : count_(count) {}

    constexpr T count() const noexcept { return count_; }

    constexpr bool operator==(const TypeWithRatio&) const = default;
    constexpr auto operator<=>(const TypeWithRatio& other) const noexcept {
        return count_ <=> other.count_;
    }
    friend constexpr TypeWithRatio operator+(TypeWithRatio a, TypeWithRatio b) noexcept {
        return TypeWithRatio(static_cast<T>(a.count_ + b.count_));
    }
    friend constexpr TypeWithRatio operator-(TypeWithRatio a, TypeWithRatio b) noexcept {
        return TypeWithRatio(static_cast<T>(a.count_ - b.count_));
    }

private:
    T count_ = 0;
};

/// Largest value in use: 606 960 000 kHz, a channel number of 255 in the 60 GHz band.
using KiloHertz = TypeWithRatio<std::int32_t, std::kilo>;
using MegaHertz = TypeWithRatio<std::int32_t, std::mega>;
using DataRate = TypeWithRatio<std::uint32_t, std::ratio<1>>;

/// `value` in the unit of To, cut towards zero where that unit is coarser, and to the low bits that
/// fit into To.
template <typename To, typename T, typename Ratio>
constexpr To ratio_cast(TypeWithRatio<T, Ratio> value) noexcept {
    using Factor = std::ratio_divide<Ratio, typename To::ratio>;
    return To(
        static_cast<typename To::rep>(std::int64_t{value.count()} * Factor::num / Factor::den));
}

}  // namespace nuv

namespace nuv::serialization {

/// The bare count, whatever its type, as signed 64 bits: the unit is part of what a member means.
template <typename T, typename Ratio>
struct JSONSerializableType<TypeWithRatio<T, Ratio>> {
    static void serialize(YAJLStream& stream, SerializationContext& ctx,
                          const TypeWithRatio<T, Ratio>& value) {
        JSONSerializableType<std::int64_t>::serialize(stream, ctx, value.count());
    }
    static void deserialize(YAJLNode& node, SerializationContext& ctx, const std::string& key,
                            TypeWithRatio<T, Ratio>& value) {
        std::int64_t count = 0;
        JSONSerializableType<std::int64_t>::deserialize(node, ctx, key, count);
        value = TypeWithRatio<T, Ratio>(static_cast<T>(count));
    }
};

}  // namespace nuv::serialization

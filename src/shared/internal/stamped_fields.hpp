// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <tuple>
#include <utility>

// What objects with several time-stamped fields do with each of them. A class lists them once, with
// std::tie().

namespace nuv::impl {

/// `combine` of what `operation` says of each pair of fields.
template <class Ours, class Theirs, class Operation, class Combine>
auto each_field(const Ours& ours, const Theirs& theirs, Operation operation, Combine combine) {
    return [&]<std::size_t... I>(std::index_sequence<I...>) {
        return combine(operation(std::get<I>(ours), std::get<I>(theirs))...);
    }
    (std::make_index_sequence<std::tuple_size_v<Ours>>());
}

void update_fields(const auto& ours, const auto& theirs) {
    each_field(
        ours, theirs, [](auto& a, const auto& b) { return a.update(b); }, [](auto...) {});
}

bool can_update_fields(const auto& ours, const auto& theirs) {
    return each_field(
        ours, theirs, [](const auto& a, const auto& b) { return a.can_update_from(b); },
        [](auto... can) { return (can || ...); });
}

bool equivalent_fields(const auto& ours, const auto& theirs) {
    return each_field(
        ours, theirs, [](const auto& a, const auto& b) { return a.equivalent_to(b); },
        [](auto... equivalent) { return (equivalent && ...); });
}

}  // namespace nuv::impl

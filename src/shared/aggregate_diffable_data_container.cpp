// SPDX-License-Identifier: Apache-2.0
#include "nuv/aggregate_diffable_data_container.hpp"

#include <stdexcept>
#include <utility>

namespace nuv {

AggregateDiffableDataContainer::AggregateDiffableDataContainer(
    const AggregateDiffableDataContainer& other)
    : DiffableDataContainer(other) {
    children_.reserve(other.children_.size());
    for (const auto& child : other.children_) {
        children_.push_back(child->clone());
    }
}

AggregateDiffableDataContainer& AggregateDiffableDataContainer::operator=(
    const AggregateDiffableDataContainer& other) {
    return *this = AggregateDiffableDataContainer(other);
}

void AggregateDiffableDataContainer::add_child(std::unique_ptr<DiffableDataContainer> child) {
    if (!child) {
        throw std::runtime_error("Can't add an empty child to AggregateDiffableDataContainer");
    }
    children_.push_back(std::move(child));
}

std::unique_ptr<DiffableDataContainer> AggregateDiffableDataContainer::clone() const {
    return std::make_unique<AggregateDiffableDataContainer>(*this);
}

void AggregateDiffableDataContainer::add_to_diff(ChangeSet& changes) const {
    for (const auto& child : children_) {
        child->add_to_diff(changes);
    }
}

}  // namespace nuv

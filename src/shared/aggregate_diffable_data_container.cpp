// SPDX-License-Identifier: Apache-2.0
#include "nuv/aggregate_diffable_data_container.hpp"

#include <stdexcept>
#include <utility>

namespace nuv {

void AggregateDiffableDataContainer::add_child(std::unique_ptr<DiffableDataContainer> child) {
    if (!child) {
        throw std::runtime_error("Can't add an empty child to AggregateDiffableDataContainer");
    }
    children_.push_back(std::move(child));
}

std::unique_ptr<DiffableDataContainer> AggregateDiffableDataContainer::clone() const {
    auto copy = std::make_unique<AggregateDiffableDataContainer>();
    copy->children_.reserve(children_.size());
    for (const auto& child : children_) {
        copy->children_.push_back(child->clone());
    }
    return copy;
}

void AggregateDiffableDataContainer::add_to_diff(ChangeSet& changes) const {
    for (const auto& child : children_) {
        child->add_to_diff(changes);
    }
}

}  // namespace nuv

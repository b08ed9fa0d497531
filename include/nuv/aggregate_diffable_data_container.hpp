// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <vector>

#include "nuv/diffable_data_container.hpp"
#include "nuv/export.hpp"

namespace nuv {

/// Containers as one: what has changed in each of them, in the order they were added.
class NUV_EXPORT AggregateDiffableDataContainer : public DiffableDataContainer {
public:
    AggregateDiffableDataContainer() = default;
    ~AggregateDiffableDataContainer() override = default;
    /// Copies have clones of the children.
    AggregateDiffableDataContainer(const AggregateDiffableDataContainer& other);
    AggregateDiffableDataContainer& operator=(const AggregateDiffableDataContainer& other);
    AggregateDiffableDataContainer(AggregateDiffableDataContainer&&) noexcept = default;
    AggregateDiffableDataContainer& operator=(AggregateDiffableDataContainer&&) noexcept = default;

    /// Throws std::runtime_error if `child` is null.
    void add_child(std::unique_ptr<DiffableDataContainer> child);

    std::unique_ptr<DiffableDataContainer> clone() const override;
    /// Lets every child add to the one set: two that add_change() the same category end in its
    /// std::logic_error.
    void add_to_diff(ChangeSet& changes) const override;

private:
    std::vector<std::unique_ptr<DiffableDataContainer>> children_;
};

}  // namespace nuv

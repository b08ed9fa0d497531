// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "nuv/change_set_category.hpp"
#include "nuv/change_set_value.hpp"
#include "nuv/export.hpp"

namespace nuv {

/// What has changed in a data model, category by category, in the order it was added. A category
/// that is there with nothing set counts as unchanged, unless said otherwise. The categories must
/// outlive the set.
///
/// For the few categories of a model: every search is a walk.
class NUV_EXPORT ChangeSet {
public:
    using Entry = std::pair<std::reference_wrapper<const ChangeSetCategory>, ChangeSetValue>;
    using Entries = std::vector<Entry>;

    ChangeSet() = default;
    /// As given: a category may stand there twice.
    explicit ChangeSet(Entries entries) noexcept : entries_(std::move(entries)) {}
    ChangeSet(std::initializer_list<Entry> entries) : entries_(entries) {}
    /// Of one entry. Never throws: where there is no memory for it, the process ends.
    ChangeSet(const ChangeSetCategory& category, const ChangeSetValue& value) noexcept;

    /// Throws std::logic_error if the category is there, even with nothing set.
    void add_change(const ChangeSetCategory& category, const ChangeSetValue& value);
    void add_change(const Entry& entry) { add_change(entry.first, entry.second); }
    /// The value of the category, which is added with nothing set if it is not there. The next
    /// addition ends the reference.
    ChangeSetValue& get_or_add_change(const ChangeSetCategory& category);

    const Entries& get_changes() const noexcept { return entries_; }
    Entries& get_changes() noexcept { return entries_; }
    void clear() noexcept { entries_.clear(); }

    /// Whether nothing has changed.
    bool empty() const;
    /// Whether all that has changed has changed in `other`, too.
    bool is_subset_of_or_equal_to(const ChangeSet& other) const;
    /// Whether something has changed in both.
    bool any_of(const ChangeSet& other) const;
    /// Whether both have the same entries in whatever order, those with nothing set included.
    bool is_equal_to(const ChangeSet& other) const;

    /// The names of the members that have changed; if `qualified`, as CATEGORY_MEMBER.
    std::unordered_set<std::string> get_changed_members(bool qualified) const;

private:
    Entries entries_;
};

}  // namespace nuv

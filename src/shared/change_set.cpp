// SPDX-License-Identifier: Apache-2.0
#include "nuv/change_set.hpp"

#include <algorithm>
#include <stdexcept>

namespace nuv {

namespace {

bool is_of(const ChangeSet::Entry& entry, const ChangeSetCategory& category) {
    return &entry.first.get() == &category;
}

const ChangeSetValue::Bits& bits_of(const ChangeSet::Entry& entry) {
    return entry.second.get_value();
}

}  // namespace

ChangeSet::ChangeSet(const ChangeSetCategory& category, const ChangeSetValue& value) noexcept
    : entries_{{category, value}} {}

void ChangeSet::add_change(const ChangeSetCategory& category, const ChangeSetValue& value) {
    if (std::ranges::any_of(entries_, [&](const Entry& own) { return is_of(own, category); })) {
        // "already" twice: log readers match it.
        throw std::logic_error("Trying to add change for category " + category.get_category_name() +
                               " but it already already exists in the ChangeSet");
    }
    entries_.emplace_back(category, value);
}

ChangeSetValue& ChangeSet::get_or_add_change(const ChangeSetCategory& category) {
    const auto found =
        std::ranges::find_if(entries_, [&](const Entry& own) { return is_of(own, category); });
    return found != entries_.end() ? found->second
                                   : entries_.emplace_back(category, ChangeSetValue()).second;
}

bool ChangeSet::empty() const {
    return std::ranges::all_of(entries_, [](const Entry& own) { return bits_of(own).none(); });
}

bool ChangeSet::is_subset_of_or_equal_to(const ChangeSet& other) const {
    return std::ranges::all_of(entries_, [&](const Entry& own) {
        return bits_of(own).none() || std::ranges::any_of(other.entries_, [&](const Entry& its) {
                   return is_of(its, own.first) && (bits_of(own) & ~bits_of(its)).none();
               });
    });
}

bool ChangeSet::any_of(const ChangeSet& other) const {
    return std::ranges::any_of(entries_, [&](const Entry& own) {
        return std::ranges::any_of(other.entries_, [&](const Entry& its) {
            return is_of(its, own.first) && (bits_of(own) & bits_of(its)).any();
        });
    });
}

bool ChangeSet::is_equal_to(const ChangeSet& other) const {
    return std::ranges::is_permutation(entries_, other.entries_,
                                       [](const Entry& own, const Entry& its) {
                                           return is_of(its, own.first) && own.second == its.second;
                                       });
}

std::unordered_set<std::string> ChangeSet::get_changed_members(bool qualified) const {
    std::unordered_set<std::string> members;
    for (const auto& [category, value] : entries_) {
        members.merge(category.get().member_resolution(value, qualified));
    }
    return members;
}

}  // namespace nuv

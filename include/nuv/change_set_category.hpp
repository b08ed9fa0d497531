// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <unordered_set>

#include "nuv/change_set_value.hpp"
#include "nuv/export.hpp"

namespace nuv {

/// A part of a data model whose members can change. Its address is its identity: two categories of
/// the same name are two.
class NUV_EXPORT ChangeSetCategory {
public:
    virtual ~ChangeSetCategory();

    virtual std::string get_category_name() const = 0;
    /// The names of the members whose bits are set.
    virtual std::unordered_set<std::string> resolve_value(const ChangeSetValue& value) const = 0;

    /// The same names; if `qualified`, each with the category's name and "_" in front.
    std::unordered_set<std::string> member_resolution(const ChangeSetValue& value,
                                                      bool qualified) const;

protected:
    ChangeSetCategory() = default;
    ChangeSetCategory(const ChangeSetCategory&) = default;
    ChangeSetCategory(ChangeSetCategory&&) = default;
    ChangeSetCategory& operator=(const ChangeSetCategory&) = default;
    ChangeSetCategory& operator=(ChangeSetCategory&&) = default;
};

}  // namespace nuv

// SPDX-License-Identifier: Apache-2.0
#include "nuv/change_set_category.hpp"

namespace nuv {

ChangeSetCategory::~ChangeSetCategory() = default;

std::unordered_set<std::string> ChangeSetCategory::member_resolution(const ChangeSetValue& value,
                                                                     bool qualified) const {
    std::unordered_set<std::string> members = resolve_value(value);
    if (!qualified) {
        return members;
    }
    const std::string prefix = get_category_name() + '_';
    std::unordered_set<std::string> qualified_members;
    for (const std::string& member : members) {
        qualified_members.insert(prefix + member);
    }
    return qualified_members;
}

}  // namespace nuv

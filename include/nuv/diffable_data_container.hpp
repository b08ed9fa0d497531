// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/change_set.hpp"
#include "nuv/cloneable.hpp"
#include "nuv/export.hpp"

namespace nuv {

/// Data that can tell what has changed in it.
class NUV_EXPORT DiffableDataContainer : public ICloneable<DiffableDataContainer> {
public:
    /// What add_to_diff() adds to an empty set.
    virtual ChangeSet diff() const;
    virtual void add_to_diff(ChangeSet& changes) const = 0;
};

}  // namespace nuv

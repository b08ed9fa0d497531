// SPDX-License-Identifier: Apache-2.0
#include "nuv/diffable_data_container.hpp"

namespace nuv {

ChangeSet DiffableDataContainer::diff() const {
    ChangeSet changes;
    add_to_diff(changes);
    return changes;
}

}  // namespace nuv

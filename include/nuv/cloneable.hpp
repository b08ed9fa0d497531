// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include "nuv/export.hpp"

namespace nuv {

/// What can be copied through a pointer to its base `T`.
template <class T>
class ICloneable {
public:
    virtual ~ICloneable() = default;

    virtual std::unique_ptr<T> clone() const = 0;

protected:
    ICloneable() = default;
    ICloneable(const ICloneable&) = default;
    ICloneable& operator=(const ICloneable&) = default;
};

}  // namespace nuv

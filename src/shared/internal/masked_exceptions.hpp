// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <istream>

namespace nuv::impl {

/// Keeps a stream from throwing of its own while it is read. Its exception mask comes back at the end;
/// what failed meanwhile is seen by its state only.
class MaskedExceptions {
public:
    explicit MaskedExceptions(std::istream& is) : is_(is), mask_(is.exceptions()) {
        is.exceptions(std::ios_base::goodbit);
    }
    ~MaskedExceptions() {
        try {
            is_.exceptions(mask_);
        } catch (const std::ios_base::failure&) {  // the mask is set all the same
        }
    }
    MaskedExceptions(const MaskedExceptions&) = delete;
    MaskedExceptions& operator=(const MaskedExceptions&) = delete;

private:
    std::istream& is_;
    std::ios_base::iostate mask_;
};

}  // namespace nuv::impl

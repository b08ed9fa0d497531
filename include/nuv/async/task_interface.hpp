// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <exception>

#include "nuv/export.hpp"

namespace nuv::async {

/// What the owner of tasks of any kind needs of them.
class NUV_EXPORT TaskInterface {
public:
    TaskInterface() = default;
    TaskInterface(const TaskInterface&) = delete;
    TaskInterface& operator=(const TaskInterface&) = delete;
    virtual ~TaskInterface();

    /// Forgets the results of the last run, for reset().
    virtual void reset_impl() = 0;
    /// Makes the task as if it had never been started.
    virtual void reset() = 0;

    /// Ends a running task without a result.
    virtual void cancel() = 0;
    virtual bool has_value() const = 0;
    virtual bool has_exception() const = 0;
    /// Null without one.
    virtual std::exception_ptr get_exception() const = 0;
};

}  // namespace nuv::async

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <concepts>
#include <cstddef>
#include <functional>
#include <future>
#include <list>
#include <memory>
#include <type_traits>
#include <utility>

#include "nuv/async/future_connection.hpp"
#include "nuv/async/future_wrapper_base.hpp"
#include "nuv/export.hpp"

namespace nuv::async {

/// Futures whose results the main loop hands out. Threads may fulfill them; all calls come from the
/// thread of the loop.
///
/// A pending future costs the loop a pass every millisecond. One made by std::async with
/// std::launch::deferred is never ready: use std::launch::async.
class NUV_EXPORT FuturePool {
public:
    /// The result is dropped, and the connection is to none, once finish() was called.
    FutureConnection add(std::shared_ptr<FutureWrapperBase> wrapper);

    /// Calls `handler` with the future once that is ready.
    template <typename T, std::invocable<std::future<T>> Handler>
    FutureConnection add(std::future<T> future, Handler handler) {
        class Wrapper final : public FutureWrapperBase {
        public:
            Wrapper(std::future<T> wanted, Handler taker)
                : future_(std::move(wanted)), handler_(std::move(taker)) {}
            std::future_status get_status() const override {
                return future_.wait_for(std::chrono::seconds(0));
            }
            void handle() override { std::invoke(handler_, std::move(future_)); }

        private:
            std::future<T> future_;
            Handler handler_;
        };
        return add(std::make_shared<Wrapper>(std::move(future), std::move(handler)));
    }

    std::size_t count_futures() const noexcept { return futures_.size(); }
    void clear_futures();
    /// As clear_futures(); the pool takes no more.
    void finish();

    /// One look at each future that is there on entry. Returns whether some are left. What a handler
    /// throws leaves it, and its future is gone. A handler may add and disconnect futures, clear and
    /// finish the pool.
    bool process_futures();

private:
    bool finished_ = false;
    std::list<std::shared_ptr<FutureWrapperBase>> futures_;
};

/// The pool that every main loop of the process works on.
NUV_EXPORT FuturePool& get_global_future_pool();

}  // namespace nuv::async

// SPDX-License-Identifier: Apache-2.0
#include "nuv/async/future_pool.hpp"

#include <algorithm>

#include "internal/log_module.hpp"

namespace nuv::async {

namespace {
constinit impl::LogModule log_module{"future_pool", "src/shared/async/future_pool"};
}

FutureConnection FuturePool::add(std::shared_ptr<FutureWrapperBase> wrapper) {
    if (finished_ || wrapper == nullptr) {
        return {};
    }
    futures_.push_back(std::move(wrapper));
    return FutureConnection(futures_.back());
}

void FuturePool::clear_futures() {
    NUV_LOG(log_module, debug) << "_futures.size()=" << futures_.size();
    // Last: what is destroyed may use the pool.
    const auto cleared = std::exchange(futures_, {});
}

void FuturePool::finish() {
    NUV_LOG(log_module, debug) << "_futures.size()=" << futures_.size();
    finished_ = true;
    const auto cleared = std::exchange(futures_, {});
}

bool FuturePool::process_futures() {
    const std::size_t count = futures_.size();
    auto next = futures_.begin();
    for (std::size_t visited = 0; visited < count && next != futures_.end(); ++visited) {
        const std::shared_ptr<FutureWrapperBase> wrapper = *next;
        if (!wrapper->connected()) {
            next = futures_.erase(next);
            continue;
        }
        const void* const address = wrapper.get();
        const std::future_status status = wrapper->get_status();
        if (status != std::future_status::ready) {
            if (status == std::future_status::deferred) {
                NUV_LOG(log_module, debug) << "status of future_wrapper_base=" << address
                                           << " is std::future_status::deferred";
            }
            ++next;
            continue;
        }
        NUV_LOG(log_module, debug)
            << "status of future_wrapper_base=" << wrapper.get() << " is std::future_status::ready";
        // The handler may clear the list, so the entry is looked for again. Entries of a list that
        // was cleared are all new.
        const auto erase = [&] {
            const auto found = std::find(futures_.begin(), futures_.end(), wrapper);
            next = found != futures_.end() ? futures_.erase(found) : futures_.end();
        };
        try {
            wrapper->handle();
        } catch (...) {
            erase();
            throw;
        }
        erase();
    }
    NUV_LOG(log_module, debug) << "Processed " << count << " (" << futures_.size() << " left)";
    return !futures_.empty();
}

FuturePool& get_global_future_pool() {
    static FuturePool pool;
    return pool;
}

}  // namespace nuv::async

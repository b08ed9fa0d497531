// SPDX-License-Identifier: Apache-2.0
#include "nuv/event_bus.hpp"

#include "nuv/i_event_module.hpp"

namespace nuv {

EventBus::EventBus() = default;
EventBus::~EventBus() = default;

EventBus& EventBus::get() {
    static EventBus bus;
    return bus;
}

IEventModule* EventBus::get(const ID& id) const {
    const auto found = modules_.find(id);
    return found != modules_.end() ? found->second.get() : nullptr;
}

bool EventBus::remove(const ID& id) { return !modules_.extract(id).empty(); }

bool EventBus::insert(const ID& id, std::unique_ptr<IEventModule> module) {
    return modules_.try_emplace(id, std::move(module)).second;
}

}  // namespace nuv

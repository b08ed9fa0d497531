// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <concepts>
#include <map>
#include <memory>
#include <utility>

#include "nuv/export.hpp"
#include "nuv/id.hpp"

namespace nuv {

class IEventModule;

/// The event modules of the process, by ID. For the thread of the main loop.
class NUV_EXPORT EventBus {
public:
    /// What a module's constructor takes, so that only the bus creates modules.
    class CreateToken {
        friend EventBus;
        CreateToken() = default;
    };

    EventBus(const EventBus&) = delete;
    EventBus& operator=(const EventBus&) = delete;

    /// The instance of the process. It is destroyed at process exit, and its modules with it.
    static EventBus& get();

    /// Creates `Module(token, args...)`. Returns null, and creates nothing, when the ID is taken.
    template <std::derived_from<IEventModule> Module, typename... Args>
    Module* add(const ID& id, Args&&... args) {
        if (get(id) != nullptr) {
            return nullptr;
        }
        auto created = std::make_unique<Module>(CreateToken(), std::forward<Args>(args)...);
        Module* const module = created.get();
        return insert(id, std::move(created)) ? module : nullptr;
    }

    /// Null without such a module.
    IEventModule* get(const ID& id) const;
    /// Destroys the module. Returns false when there is none.
    bool remove(const ID& id);

private:
    EventBus();
    ~EventBus();

    bool insert(const ID& id, std::unique_ptr<IEventModule> module);

    std::map<ID, std::unique_ptr<IEventModule>> modules_;
};

}  // namespace nuv

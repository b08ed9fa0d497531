// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "nuv_platform/nuvipc.h"

/// What every implementation of nuvipc.h has in common: names, and the handlers of an endpoint.
namespace nuv::platform {

inline constexpr std::size_t MAX_IPC_NAME = 64;
inline constexpr std::string_view ALL_EVENTS = "*";

bool is_endpoint_name(std::string_view name) noexcept;
bool is_event_name(std::string_view name) noexcept;

/// The message handler and the notifiers of one endpoint. Results are those of nuvipc.h.
class IpcReceiver {
public:
    int set_handler(nuvipc_msg_handler handler, void* ctx) noexcept;
    int remove_handler() noexcept;

    /// The checks of add_notifier(), which does not make them.
    int may_add_notifier(const char* event, nuvipc_event_callback callback) const noexcept;
    /// Throws std::bad_alloc.
    void add_notifier(std::string_view event, nuvipc_event_callback callback, void* ctx);
    int remove_notifier(const char* event) noexcept;
    std::vector<std::string> events() const;
    /// No handler and no notifier is called any more.
    void clear() noexcept;

    /// These call the handler or the notifiers, and return whether there was one. The object has to
    /// outlive them, whatever the callee does.
    bool message(nuvipc* ipc, const char* sender, void* data, unsigned size) const;
    bool event(nuvipc* ipc, const char* event, void* data, unsigned size) const;
    bool wants(std::string_view event) const noexcept;

private:
    struct Notifier {
        nuvipc_event_callback callback;
        void* ctx;
    };

    nuvipc_msg_handler handler_ = nullptr;
    void* handler_ctx_ = nullptr;
    std::map<std::string, Notifier, std::less<>> notifiers_;
};

}  // namespace nuv::platform

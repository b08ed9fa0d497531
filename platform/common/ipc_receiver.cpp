// SPDX-License-Identifier: Apache-2.0
#include "platform/common/ipc_receiver.hpp"

#include <algorithm>
#include <array>
#include <cerrno>

namespace nuv::platform {

bool is_endpoint_name(std::string_view name) noexcept {
    constexpr std::string_view DIGITS_AND_LETTERS =
        "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr std::array<std::string_view, 4> RESERVED = {".lock", ".new", ".events", ".cmd"};
    const auto allowed = [&](char c, std::string_view others) {
        return DIGITS_AND_LETTERS.find(c) != std::string_view::npos ||
               others.find(c) != std::string_view::npos;
    };
    return !name.empty() && name.size() <= MAX_IPC_NAME && allowed(name[0], "_") &&
           std::all_of(name.begin(), name.end(), [&](char c) { return allowed(c, "_.-"); }) &&
           std::none_of(RESERVED.begin(), RESERVED.end(),
                        [&](std::string_view suffix) { return name.ends_with(suffix); });
}

bool is_event_name(std::string_view name) noexcept {
    return !name.empty() && name.size() <= MAX_IPC_NAME &&
           std::none_of(name.begin(), name.end(), [](char c) {
               const auto octet = static_cast<unsigned char>(c);
               return octet < 32 || octet == 127 || c == '*';
           });
}

int IpcReceiver::set_handler(nuvipc_msg_handler handler, void* ctx) noexcept {
    if (handler == nullptr) {
        return -EINVAL;
    }
    if (handler_ != nullptr) {
        return -EEXIST;
    }
    handler_ = handler;
    handler_ctx_ = ctx;
    return 0;
}

int IpcReceiver::remove_handler() noexcept {
    if (handler_ == nullptr) {
        return -ENOENT;
    }
    handler_ = nullptr;
    return 0;
}

int IpcReceiver::may_add_notifier(const char* event,
                                  nuvipc_event_callback callback) const noexcept {
    if (event == nullptr || callback == nullptr || (event != ALL_EVENTS && !is_event_name(event))) {
        return -EINVAL;
    }
    return notifiers_.find(event) != notifiers_.end() ? -EEXIST : 0;
}

void IpcReceiver::add_notifier(std::string_view event, nuvipc_event_callback callback, void* ctx) {
    notifiers_.emplace(event, Notifier{callback, ctx});
}

int IpcReceiver::remove_notifier(const char* event) noexcept {
    if (event == nullptr) {
        return -EINVAL;
    }
    const auto found = notifiers_.find(event);
    if (found == notifiers_.end()) {
        return -ENOENT;
    }
    notifiers_.erase(found);
    return 0;
}

std::vector<std::string> IpcReceiver::events() const {
    std::vector<std::string> names;
    for (const auto& [name, notifier] : notifiers_) {
        names.push_back(name);
    }
    return names;
}

void IpcReceiver::clear() noexcept {
    handler_ = nullptr;
    notifiers_.clear();
}

bool IpcReceiver::message(nuvipc* ipc, const char* sender, void* data, unsigned size) const {
    if (handler_ == nullptr) {
        return false;
    }
    handler_(ipc, sender, data, size, handler_ctx_);
    return true;
}

bool IpcReceiver::wants(std::string_view event) const noexcept {
    return notifiers_.find(event) != notifiers_.end() ||
           notifiers_.find(ALL_EVENTS) != notifiers_.end();
}

bool IpcReceiver::event(nuvipc* ipc, const char* event, void* data, unsigned size) const {
    bool taken = false;
    for (const std::string_view name : {std::string_view(event), ALL_EVENTS}) {
        const auto found =
            notifiers_.find(name);  // anew: the first one may have removed the second
        if (found != notifiers_.end()) {
            const Notifier notifier = found->second;
            taken = true;
            notifier.callback(ipc, event, data, size, notifier.ctx);
        }
    }
    return taken;
}

}  // namespace nuv::platform

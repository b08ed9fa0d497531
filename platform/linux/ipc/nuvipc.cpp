// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/nuvipc.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <new>
#include <string>

#include "nuv_platform/csock.h"
#include "platform/linux/ipc/endpoint.hpp"
#include "platform/linux/ipc/registry.hpp"
#include "platform/linux/ipc/runtime_folder.hpp"

using nuv::platform::Endpoint;

namespace {

nuvipc* manager = nullptr;

/// Calls the member function, unless there is no endpoint or it is the parent's.
template <typename Result, typename... Parameters, typename... Arguments>
int forward(nuvipc* ipc, Result (Endpoint::*call)(Parameters...), Arguments... arguments) {
    if (ipc == nullptr) {
        return -EINVAL;
    }
    Endpoint& endpoint = *Endpoint::from(ipc);
    return endpoint.inherited() ? -ECHILD : (endpoint.*call)(arguments...);
}

}  // namespace

extern "C" {

nuvipc* nuvipc_create(const char* name) {
    int error = 0;
    Endpoint* const endpoint = Endpoint::create(name, error);
    return endpoint != nullptr ? endpoint->handle() : nullptr;
}

void nuvipc_destroy(nuvipc* ipc) {
    if (ipc != nullptr) {
        Endpoint::destroy(*Endpoint::from(ipc));
    }
}

int nuvipc_msg_register(nuvipc* ipc, nuvipc_msg_handler handler, void* ctx, unsigned /*flags*/) {
    return forward(ipc, &Endpoint::set_handler, handler, ctx);
}

int nuvipc_msg_unregister(nuvipc* ipc) { return forward(ipc, &Endpoint::remove_handler); }

int nuvipc_msg_send(nuvipc* ipc, const char* destination, const void* data, unsigned size) {
    return forward(ipc, &Endpoint::send, destination, data, size);
}

int nuvipc_event_send(nuvipc* ipc, const char* event, const void* data, unsigned size) {
    return forward(ipc, &Endpoint::send_event, event, data, size);
}

int nuvipc_event_register_notifier(nuvipc* ipc, const char* event, nuvipc_event_callback callback,
                                   void* ctx) {
    return forward(ipc, &Endpoint::add_notifier, event, callback, ctx);
}

int nuvipc_event_unregister_notifier(nuvipc* ipc, const char* event) {
    return forward(ipc, &Endpoint::remove_notifier, event);
}

int nuvipc_list(int (*each)(const nuvipc_endpoint* endpoint, void* ctx), void* ctx) {
    if (each == nullptr) {
        return -EINVAL;
    }
    const auto folder = nuv::platform::open_runtime_folder();
    if (!folder.fd) {
        return folder.error;
    }
    try {
        for (const std::string& name : nuv::platform::endpoint_names(folder.fd.get())) {
            struct stat status {};
            if (::fstatat(folder.fd.get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) {
                continue;  // gone meanwhile
            }
            const auto owner = nuv::platform::owner_of(folder.fd.get(), name);
            const nuvipc_endpoint endpoint = {name.c_str(),
                                              owner.pid,
                                              status.st_uid,
                                              status.st_gid,
                                              status.st_mode & 07777U,
                                              owner.alive ? 1 : 0};
            if (const int result = each(&endpoint, ctx)) {
                return result;
            }
        }
        return 0;
    } catch (const std::bad_alloc&) {
        return -ENOMEM;
    }
}

int daemonmng_init(const char* name) {
    if (manager != nullptr) {
        return -EEXIST;
    }
    int error = csock_init();
    if (error != 0) {
        return error;
    }
    Endpoint* const endpoint = Endpoint::create(name, error);
    if (endpoint == nullptr) {
        csock_exit();
        return error;
    }
    manager = endpoint->handle();
    return 0;
}

void daemonmng_exit(void) {
    if (manager != nullptr) {
        nuvipc_destroy(manager);
        manager = nullptr;
        csock_exit();
    }
}

nuvipc* daemonmng_get_nuvipc(void) { return manager; }

}  // extern "C"

// SPDX-License-Identifier: Apache-2.0
#include "commands/live_loop.hpp"

#include <cerrno>
#include <cstring>
#include <set>
#include <stdexcept>

#include "nuv_platform/csock.h"

namespace nuvctl {

std::string problem_with(const std::string& endpoint, int result) {
    switch (result) {
        case -ENOENT:
            return "there is no endpoint '" + endpoint + "'; nuvctl endpoints lists them";
        case -ECONNREFUSED:
            return "the owner of the endpoint '" + endpoint + "' is gone";
        case -EACCES:
            return "the endpoint '" + endpoint +
                   "' may not be called by this user; nuvctl endpoints --access says who may";
        case -EAGAIN:
            return "'" + endpoint + "' is busy and takes nothing more at the moment";
        case -EMSGSIZE:
            return "more than " + std::to_string(NUVIPC_MAX_SIZE) + " octets";
        case -EINVAL:
            return "'" + endpoint + "' is not a valid name";
        default:
            return "'" + endpoint + "': " + std::strerror(-result);
    }
}

LiveLoop::LiveLoop() {
    constexpr unsigned most = 1000;
    if (const int result = csock_init(); result < 0) {
        throw std::runtime_error(std::string("no event loop: ") + std::strerror(-result));
    }
    std::set<std::string> taken;
    const auto remember = [](const nuvipc_endpoint* endpoint, void* names) {
        if (endpoint->alive != 0) {
            static_cast<std::set<std::string>*>(names)->insert(endpoint->name);
        }
        return 0;
    };
    nuvipc_list(remember, &taken);
    for (unsigned number = 1; number <= most && ipc_ == nullptr; ++number) {
        const std::string name = "nuvctl." + std::to_string(number);
        if (!taken.contains(name)) {
            ipc_.reset(nuvipc_create(name.c_str()));
            if (ipc_ == nullptr && errno != EEXIST) {
                break;
            }
        }
    }
    if (ipc_ == nullptr) {
        csock_exit();
        throw std::runtime_error("no endpoint of its own");
    }
}

LiveLoop::~LiveLoop() {
    ipc_.reset();
    csock_exit();
}

int LiveLoop::run_until_stopped() {
    constexpr int by_signal = 128;
    StopSignals stop;
    const auto readable = [](int, void*) { return 0; };
    const uint32_t handle = csock_add_fd(stop.descriptor(), "stop signals", readable, nullptr,
                                         nullptr, nullptr, 0, nullptr);
    while (stop.received() == 0) {
        csock_select_with_msecs(-1);
    }
    csock_remove_fd(handle);
    return by_signal + stop.received();
}

}  // namespace nuvctl

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "nuv_platform/nuvipc.h"
#include "platform/common/aicmd_server.hpp"
#include "platform/common/file_descriptor.hpp"
#include "platform/common/ipc_receiver.hpp"

namespace nuv::platform {
class FakePlatform;
}

/// An endpoint of the test double. It remembers its node, for tests with several of them.
struct nuvipc {
    struct Message {
        std::string sender;
        std::string event;  // empty: a message
        std::vector<unsigned char> data;
    };

    nuv::platform::FakePlatform* node = nullptr;
    std::string name;
    nuv::platform::FileDescriptor ready;  // readable while messages wait
    std::uint32_t registration = 0;
    nuv::platform::IpcReceiver receiver;
    std::deque<Message> queue;
    std::unique_ptr<nuv::platform::CommandListener> listener;

    int take(const nuvipc& sender, std::string_view event, const void* data, std::size_t size);
};

namespace nuv::platform {

/// The endpoint behind a handle. Empty for null and for one that does not exist any more: a handle may
/// outlive the platform it came from.
std::shared_ptr<nuvipc> find_endpoint(const nuvipc* handle);
std::shared_ptr<nuvipc> find_endpoint(const FakePlatform& node, std::string_view name);

}  // namespace nuv::platform

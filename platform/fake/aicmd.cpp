// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/aicmd.h"

#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <memory>
#include <stdexcept>
#include <utility>

#include "nuv_platform/fake/fake_platform.hpp"
#include "platform/common/aicmd_server.hpp"
#include "platform/common/file_descriptor.hpp"
#include "platform/fake/call_text.hpp"
#include "platform/fake/endpoint.hpp"

namespace nuv::platform {

FakeCommands::FakeCommands(std::vector<std::string>& shared_journal, FakeLoop& loop)
    : FakeService(shared_journal,
                  {"aicmd_listen_start", "aicmd_register_library", "aicmd_unregister_library",
                   "aicmd_module_set_ctx", "aicmd_connect"}),
      loop_(loop),
      server_(std::make_unique<CommandServer>(loop.loop())) {}

FakeCommands::~FakeCommands() = default;

std::string FakeCommands::run(const std::string& endpoint, const std::string& line) {
    FileDescriptor socket(aicmd_connect(endpoint.c_str()));
    if (!socket) {
        throw std::runtime_error("no listener for debug commands at \"" + endpoint + '"');
    }
    const std::string input = line + '\n';
    ::send(socket.get(), input.data(), input.size(), MSG_NOSIGNAL);
    std::string answer;
    const auto complete = [&answer] {
        const std::size_t last = answer.rfind('\n', answer.size() - 2) + 1;
        return answer.ends_with('\n') && (answer.compare(last, std::string::npos, "OK\n") == 0 ||
                                          answer.compare(last, 6, "ERROR ") == 0);
    };
    constexpr int MAX_PASSES = 1000;  // an answer may need several
    for (int passes = 0; !complete(); ++passes) {
        if (passes == MAX_PASSES || loop_.loop().pass(0) != 0) {
            throw std::runtime_error("no answer to \"" + line + '"');
        }
        std::array<char, 4096> octets{};
        ssize_t size = 0;
        while ((size = ::recv(socket.get(), octets.data(), octets.size(), MSG_DONTWAIT)) > 0) {
            answer.append(octets.data(), static_cast<std::size_t>(size));
        }
        if (size == 0 && !complete()) {
            throw std::runtime_error("the session ended in the answer to \"" + line + '"');
        }
    }
    socket.reset();
    loop_.loop().pass(0);  // the session ends
    return answer;
}

std::vector<std::string> FakeCommands::leftovers() const {
    std::vector<std::string> left;
    for (const std::string& name : server_->libraries()) {
        left.push_back("library of debug commands \"" + name + '"');
    }
    return left;
}

namespace {

const char* name_of(const aicmd_library* library) {
    return library != nullptr ? library->name : nullptr;
}

// Notes a call about a library, and carries it out.
template <typename Call, typename... Args>
int call_server(const char* function, const aicmd_library* library, Call call,
                const Args&... args) {
    FakePlatform* const fake = FakePlatform::current();
    if (fake == nullptr) {
        return -ENODEV;
    }
    const auto refusal = noted(fake->commands(), function, name_of(library), args...);
    return refusal ? *refusal : call(fake->commands().server());
}

}  // namespace

}  // namespace nuv::platform

using nuv::platform::call_server;
using nuv::platform::CommandListener;
using nuv::platform::CommandServer;
using nuv::platform::FakePlatform;
using nuv::platform::FileDescriptor;
using nuv::platform::find_endpoint;
using nuv::platform::noted;

extern "C" {

int aicmd_listen_start(nuvipc* ipc, aicmd_listener* listener, unsigned zero1, unsigned zero2,
                       unsigned zero3, unsigned zero4, unsigned zero5, ...) {
    const auto endpoint = find_endpoint(ipc);
    FakePlatform* const node = endpoint != nullptr ? endpoint->node : FakePlatform::current();
    if (node == nullptr) {
        return -ENODEV;
    }
    if (const auto refusal = noted(
            node->commands(), __func__, endpoint ? endpoint->name.c_str() : nullptr,
            listener != nullptr ? listener->name : nullptr, zero1, zero2, zero3, zero4, zero5)) {
        return *refusal;
    }
    if (endpoint == nullptr || listener == nullptr || !CommandListener::valid(listener)) {
        return -EINVAL;
    }
    if (endpoint->listener != nullptr) {
        return -EEXIST;
    }
    endpoint->listener = std::make_unique<CommandListener>(node->commands().server(), *listener);
    return 0;
}

int aicmd_register_library(aicmd_library* library) {
    return call_server(__func__, library, [library](CommandServer& server) {
        return server.register_library(library);
    });
}

int aicmd_unregister_library(aicmd_library* library) {
    return call_server(__func__, library, [library](CommandServer& server) {
        return server.unregister_library(library);
    });
}

int aicmd_module_set_ctx(aicmd_library* library, const char* name, void* ctx) {
    return call_server(
        __func__, library,
        [=](CommandServer& server) { return server.set_context(library, name, ctx); }, name,
        static_cast<const void*>(ctx));
}

int aicmd_connect(const char* endpoint) {
    FakePlatform* const fake = FakePlatform::current();
    if (fake == nullptr) {
        return -ENODEV;
    }
    if (const auto refusal = noted(fake->commands(), __func__, endpoint)) {
        return *refusal;
    }
    if (endpoint == nullptr) {
        return -EINVAL;
    }
    const auto found = find_endpoint(*fake, endpoint);
    if (found == nullptr || found->listener == nullptr) {
        return -ENOENT;
    }
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        return -errno;
    }
    found->listener->serve(FileDescriptor(ends[1]));
    return ends[0];
}

}  // extern "C"

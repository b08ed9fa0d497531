// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/nuvipc.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <optional>
#include <utility>

#include "nuv_platform/clog.h"
#include "nuv_platform/fake/fake_platform.hpp"
#include "platform/common/loop.hpp"
#include "platform/fake/call_text.hpp"
#include "platform/fake/endpoint.hpp"

namespace nuv::platform {

namespace {

constexpr std::size_t MESSAGES_PER_PASS = 32;
constexpr std::size_t LARGE = 65536;  // more than this
constexpr std::size_t LARGE_IN_FLIGHT = std::size_t{32} << 20;
constexpr std::size_t SOCKET_BUFFER = 212'992;

std::vector<std::shared_ptr<nuvipc>>& living() {
    static std::vector<std::shared_ptr<nuvipc>> endpoints;
    return endpoints;
}

// What a message takes of the sender's buffer on a 64-bit Linux.
std::size_t buffer_cost(std::size_t size) {
    constexpr std::size_t PAGE = 4096;
    return size < PAGE ? std::bit_ceil(size + 320) + 256 : size + PAGE;
}

void log_error(int line, const std::string& text) {
    clogmod__err(clogmod_get_or_alloc("nuvipc"), "platform/fake/nuvipc", "nuvipc_create", line,
                 "%s", text.c_str());
}

int deliver_waiting(int /*fd*/, void* ctx) {
    const auto endpoint = find_endpoint(static_cast<nuvipc*>(ctx));
    // What the handlers send to their own endpoint is for a later pass.
    const std::size_t count = std::min(endpoint->queue.size(), MESSAGES_PER_PASS);
    for (std::size_t i = 0; i < count && endpoint->registration != 0; ++i) {
        nuvipc::Message& message = endpoint->queue.front();
        const auto size = static_cast<unsigned>(message.data.size());
        if (message.event.empty()) {
            endpoint->receiver.message(endpoint.get(), message.sender.c_str(), message.data.data(),
                                       size);
        } else {
            endpoint->receiver.event(endpoint.get(), message.event.c_str(), message.data.data(),
                                     size);
        }
        endpoint->queue.pop_front();
    }
    if (endpoint->registration != 0 && endpoint->queue.empty()) {
        eventfd_t value = 0;
        ::eventfd_read(endpoint->ready.get(), &value);
    }
    return 0;
}

void destroy(nuvipc& endpoint) {
    endpoint.node->loop().loop().remove(std::exchange(endpoint.registration, 0));
    endpoint.receiver.clear();
    endpoint.listener.reset();
    nuvipc*& managers = endpoint.node->ipc().managers_endpoint();
    if (managers == &endpoint) {
        managers = nullptr;
    }
    std::erase_if(living(), [&](const auto& other) { return other.get() == &endpoint; });
}

// The result of a call that cannot be carried out, if it cannot.
template <typename... Args>
std::optional<int> refused(const std::shared_ptr<nuvipc>& endpoint, const char* function,
                           const Args&... args) {
    FakePlatform* const node = endpoint != nullptr ? endpoint->node : FakePlatform::current();
    if (node == nullptr) {
        return -ENODEV;
    }
    const char* const name = endpoint != nullptr ? endpoint->name.c_str() : nullptr;
    if (const auto refusal = noted(node->ipc(), function, name, args...)) {
        return refusal;
    }
    return endpoint == nullptr ? std::optional(-EINVAL) : std::nullopt;
}

bool is_data(const void* data, std::size_t size) { return data != nullptr || size == 0; }

}  // namespace

std::shared_ptr<nuvipc> find_endpoint(const nuvipc* handle) {
    const auto found = std::ranges::find(living(), handle, &std::shared_ptr<nuvipc>::get);
    return found != living().end() ? *found : nullptr;
}

std::shared_ptr<nuvipc> find_endpoint(const FakePlatform& node, std::string_view name) {
    const auto found = std::ranges::find_if(living(), [&](const auto& endpoint) {
        return endpoint->node == &node && endpoint->name == name;
    });
    return found != living().end() ? *found : nullptr;
}

FakeIpc::FakeIpc(std::vector<std::string>& shared_journal, FakePlatform& node)
    : FakeService(shared_journal,
                  {"nuvipc_create", "nuvipc_msg_register", "nuvipc_msg_unregister",
                   "nuvipc_msg_send", "nuvipc_event_send", "nuvipc_event_register_notifier",
                   "nuvipc_event_unregister_notifier", "daemonmng_init"}),
      node_(node) {}

FakeIpc::~FakeIpc() {
    for (const std::string& name : endpoints()) {
        destroy(*find_endpoint(node_, name));
    }
}

std::vector<std::string> FakeIpc::endpoints() const {
    std::vector<std::string> names;
    for (const auto& endpoint : living()) {
        if (endpoint->node == &node_) {
            names.push_back(endpoint->name);
        }
    }
    return names;
}

std::vector<std::string> FakeIpc::leftovers() const {
    std::vector<std::string> left;
    for (const std::string& name : endpoints()) {
        left.push_back("endpoint \"" + name + '"');
    }
    return left;
}

}  // namespace nuv::platform

using nuv::platform::FakePlatform;
using nuv::platform::find_endpoint;
using nuv::platform::living;
using nuv::platform::refused;

int nuvipc::take(const nuvipc& sender, std::string_view event, const void* data, std::size_t size) {
    std::size_t buffered = 0;
    std::size_t large = 0;
    for (const Message& message : queue) {
        if (message.sender == sender.name) {
            const std::size_t waiting = message.data.size();
            (waiting > nuv::platform::LARGE ? large : buffered) +=
                waiting > nuv::platform::LARGE ? waiting : nuv::platform::buffer_cost(waiting);
        }
    }
    if (size > nuv::platform::LARGE ? large + size > nuv::platform::LARGE_IN_FLIGHT
                                    : buffered >= nuv::platform::SOCKET_BUFFER) {
        return -EAGAIN;
    }
    const auto* const octets = static_cast<const unsigned char*>(data);
    queue.push_back({sender.name, std::string(event), {octets, octets + size}});
    ::eventfd_write(ready.get(), 1);
    return 0;
}

extern "C" {

nuvipc* nuvipc_create(const char* name) {
    FakePlatform* const node = FakePlatform::current();
    if (node == nullptr || nuv::platform::noted(node->ipc(), __func__, name)) {
        return nullptr;
    }
    const std::string shown = name != nullptr ? '"' + std::string(name) + '"' : "NULL";
    if (name == nullptr || !nuv::platform::is_endpoint_name(name)) {
        nuv::platform::log_error(__LINE__, "no name for an endpoint: " + shown);
        return nullptr;
    }
    if (find_endpoint(*node, name) != nullptr) {
        nuv::platform::log_error(__LINE__, "the endpoint " + shown + " has an owner");
        return nullptr;
    }
    const auto endpoint = std::make_shared<nuvipc>();
    endpoint->node = node;
    endpoint->name = name;
    endpoint->ready = nuv::platform::FileDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    endpoint->registration = node->loop().loop().add(
        endpoint->ready.get(), ("endpoint " + endpoint->name).c_str(),
        {&nuv::platform::deliver_waiting, nullptr, nullptr, nullptr}, endpoint.get());
    if (endpoint->registration == 0) {
        nuv::platform::log_error(__LINE__, "the event loop does not take the endpoint " + shown);
        return nullptr;
    }
    living().push_back(endpoint);
    return endpoint.get();
}

void nuvipc_destroy(nuvipc* ipc) {
    if (const auto endpoint = find_endpoint(ipc)) {
        endpoint->node->ipc().note(nuv::platform::call_text(__func__, endpoint->name.c_str()));
        nuv::platform::destroy(*endpoint);
    }
}

int nuvipc_msg_register(nuvipc* ipc, nuvipc_msg_handler handler, void* ctx, unsigned flags) {
    const auto endpoint = find_endpoint(ipc);
    if (const auto result =
            refused(endpoint, __func__, handler, static_cast<const void*>(ctx), flags)) {
        return *result;
    }
    return endpoint->receiver.set_handler(handler, ctx);
}

int nuvipc_msg_unregister(nuvipc* ipc) {
    const auto endpoint = find_endpoint(ipc);
    if (const auto result = refused(endpoint, __func__)) {
        return *result;
    }
    return endpoint->receiver.remove_handler();
}

int nuvipc_msg_send(nuvipc* ipc, const char* destination, const void* data, unsigned size) {
    const auto endpoint = find_endpoint(ipc);
    if (const auto result = refused(endpoint, __func__, destination, data, size)) {
        return *result;
    }
    if (destination == nullptr || !nuv::platform::is_endpoint_name(destination) ||
        !nuv::platform::is_data(data, size)) {
        return -EINVAL;
    }
    if (size > NUVIPC_MAX_SIZE) {
        return -EMSGSIZE;
    }
    const auto receiver = find_endpoint(*endpoint->node, destination);
    return receiver != nullptr ? receiver->take(*endpoint, "", data, size) : -ENOENT;
}

int nuvipc_event_send(nuvipc* ipc, const char* event, const void* data, unsigned size) {
    const auto endpoint = find_endpoint(ipc);
    if (const auto result = refused(endpoint, __func__, event, data, size)) {
        return *result;
    }
    if (event == nullptr || !nuv::platform::is_event_name(event) ||
        !nuv::platform::is_data(data, size)) {
        return -EINVAL;
    }
    if (size > NUVIPC_MAX_SIZE) {
        return -EMSGSIZE;
    }
    int result = 0;
    for (const auto& receiver : living()) {
        if (receiver->node == endpoint->node && receiver->receiver.wants(event)) {
            result = std::min(result, receiver->take(*endpoint, event, data, size));
        }
    }
    return result;
}

int nuvipc_event_register_notifier(nuvipc* ipc, const char* event, nuvipc_event_callback callback,
                                   void* ctx) {
    const auto endpoint = find_endpoint(ipc);
    if (const auto result =
            refused(endpoint, __func__, event, callback, static_cast<const void*>(ctx))) {
        return *result;
    }
    const int result = endpoint->receiver.may_add_notifier(event, callback);
    if (result == 0) {
        endpoint->receiver.add_notifier(event, callback, ctx);
    }
    return result;
}

int nuvipc_event_unregister_notifier(nuvipc* ipc, const char* event) {
    const auto endpoint = find_endpoint(ipc);
    if (const auto result = refused(endpoint, __func__, event)) {
        return *result;
    }
    return endpoint->receiver.remove_notifier(event);
}

int nuvipc_list(int (*each)(const nuvipc_endpoint* endpoint, void* ctx), void* ctx) {
    FakePlatform* const node = FakePlatform::current();
    if (each == nullptr) {
        return -EINVAL;
    }
    auto names = node != nullptr ? node->ipc().endpoints() : std::vector<std::string>();
    std::ranges::sort(names);
    for (const std::string& name : names) {
        const nuvipc_endpoint endpoint = {name.c_str(), ::getpid(), ::getuid(),
                                          ::getgid(),   0660,       1};
        if (const int result = each(&endpoint, ctx)) {
            return result;
        }
    }
    return 0;
}

int daemonmng_init(const char* name) {
    FakePlatform* const node = FakePlatform::current();
    if (node == nullptr) {
        return -ENODEV;
    }
    if (const auto refusal = nuv::platform::noted(node->ipc(), __func__, name)) {
        return *refusal;
    }
    if (node->ipc().managers_endpoint() != nullptr) {
        return -EEXIST;
    }
    if (const int result = csock_init(); result < 0) {
        return result;
    }
    node->ipc().managers_endpoint() = nuvipc_create(name);
    if (node->ipc().managers_endpoint() == nullptr) {
        csock_exit();
        return -EADDRINUSE;
    }
    return 0;
}

void daemonmng_exit(void) {
    if (nuvipc* const managers = daemonmng_get_nuvipc()) {
        nuvipc_destroy(managers);
        csock_exit();
    }
}

nuvipc* daemonmng_get_nuvipc(void) {
    FakePlatform* const node = FakePlatform::current();
    return node != nullptr ? node->ipc().managers_endpoint() : nullptr;
}

}  // extern "C"

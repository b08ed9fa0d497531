// SPDX-License-Identifier: Apache-2.0
#include "nuv/mainloop.hpp"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

#include "internal/classic_stream.hpp"
#include "internal/log_module.hpp"
#include "internal/quote.hpp"
#include "nuv/async/future_pool.hpp"
#include "nuv_platform/csock.h"
#include "nuv_platform/daemon.h"
#include "nuv_platform/slab.h"
#include "nuv_platform/watchdog.h"

namespace nuv::daemon {

namespace {

using namespace std::chrono_literals;

constexpr auto START_LIMIT = 15s;
constexpr auto HOUSEKEEPING_PERIOD = 1s;

constinit impl::LogModule log_module{"mainloop", "src/shared/mainloop"};

std::string default_name() {
    impl::ClassicStream name;
    name << Mainloop::DEFAULT_NAME_PREFIX << ::getpid() << std::this_thread::get_id();
    return std::move(name).str();
}

void warn_if_failed(const char* function, int result) {
    if (result != 0) {
        NUV_LOG(log_module, warn) << function << "() failed with error code " << result;
    }
}

void msg_receive_handler(nuvipc* /*ipc*/, const char* sender, void* data, unsigned size,
                         void* /*ctx*/) noexcept {
    // Other senders than this library need not end their texts with a NUL.
    std::string_view text(static_cast<const char*>(data), size);
    if (text.ends_with('\0')) {
        text.remove_suffix(1);
    }
    NUV_LOG(log_module, debug) << "msg receive from=" << sender << ": " << text;
}

}  // namespace

Mainloop::Mainloop(const std::string& name, bool daemonize, bool managed)
    : name_(!name.empty() ? name : default_name()), managed_(managed) {
    if (managed_) {
        aicmd_ = std::make_unique<Aicmd>(nullptr, "");
        return;
    }
    if (csock_init() < 0) {
        throw std::runtime_error("csock_init() failed");
    }
    try {
        open(daemonize);
    } catch (...) {
        close();
        throw;
    }
}

void Mainloop::open(bool daemonize) {
    if (nuvipc* const ipc = nuvipc_create(name_.c_str())) {
        ipc_.reset(ipc, &nuvipc_destroy);
    } else {
        throw std::runtime_error("nuvipc_create() failed - program with ipc endpoint " +
                                 impl::quote(name_) + " might already be running");
    }
    warn_if_failed("nuvipc_msg_register",
                   std::min(nuvipc_msg_register(ipc_.get(), &msg_receive_handler, nullptr, 0), 0));
    aicmd_ = std::make_unique<Aicmd>(ipc_, name_);
    if (daemonize) {
        warn_if_failed("daemon_start", this->daemonize(false, false));
    }
    second_timer_.start(HOUSEKEEPING_PERIOD, [this] { on_second_timer(); });
    warn_if_failed("watchdog_csock_init", watchdog_csock_init(name_.c_str()));
}

/// Undoes what open() did, all of it or the part before a failure.
void Mainloop::close() noexcept {
    // A timer reports in its destructor that it cannot be stopped.
    std::error_code ignored;
    second_timer_.stop(ignored);
    start_timer_.stop(ignored);
    aicmd_.reset();
    if (ipc_ != nullptr) {
        nuvipc_msg_unregister(ipc_.get());
        ipc_.reset();
    }
    csock_exit();
}

Mainloop::~Mainloop() {
    finish();
    remove_watches();
    std::error_code ignored;
    second_timer_.stop(ignored);
    aicmd_.reset();
    if (!managed_) {
        watchdog_csock_exit();
        close();
    }
}

Mainloop& Mainloop::get(const std::string& name, bool daemonize, bool managed) {
    static Mainloop loop(name, daemonize, managed);
    return loop;
}

std::size_t Mainloop::count_futures() const noexcept {
    return async::get_global_future_pool().count_futures();
}

std::chrono::milliseconds Mainloop::run(std::chrono::milliseconds timeout) {
    // Deliberate: a finished loop reports ready, too. Otherwise the process that waits for the daemon
    // would see it fail.
    if (start_timer_.is_running()) {
        std::error_code ignored;  // the callback is gone in any case, and the next run tries again
        start_timer_.stop(ignored);
        daemon_ready();
    }
    if (finished()) {
        NUV_LOG(log_module, debug) << "Attempting to run a finished mainloop, ignore";
        return DEFAULT_RUN_TIMEOUT;
    }
    {
        const struct Wait {
            explicit Wait(Mainloop& waiting)
                : loop(waiting), outermost(!std::exchange(waiting.waiting_, true)) {}
            Wait(const Wait&) = delete;
            Wait& operator=(const Wait&) = delete;
            ~Wait() {
                if (outermost) {
                    loop.waiting_ = false;
                    Watches destroyed;
                    destroyed.swap(loop.removed_);
                }
            }
            Mainloop& loop;
            bool outermost;
        } wait(*this);
        csock_select_with_msecs(
            static_cast<std::int32_t>(static_cast<std::uint32_t>(timeout.count())));
    }
    return async::get_global_future_pool().process_futures() ? MIN_RUN_TIMEOUT
                                                             : DEFAULT_RUN_TIMEOUT;
}

int Mainloop::daemonize(bool keep_folder, bool keep_streams) {
    if (const int result = daemon_start(keep_folder ? 1 : 0, keep_streams ? 1 : 0)) {
        return result;
    }
    daemonized_ = true;
    start_timer_.start(START_LIMIT, [] {
        daemon_start_failed();
        std::exit(1);  // NOLINT(concurrency-mt-unsafe): destructors of static objects run
    });
    return 0;
}

void Mainloop::trigger_watchdog() { watchdog_csock_trigger(); }

void Mainloop::clear() {
    remove_watches();
    second_timer_.stop();
}

bool Mainloop::add_watch(std::shared_ptr<IWatchBase> watch) {
    // Deliberate: the list says what was added; a refused registration changes neither it nor the result.
    watch->add_to_csock();
    watches_.push_back(std::move(watch));
    return true;
}

bool Mainloop::remove_watch(const std::shared_ptr<IWatchBase>& watch) {
    const auto found = std::find(watches_.begin(), watches_.end(), watch);
    if (found == watches_.end()) {
        return false;
    }
    remove(found);
    return true;
}

void Mainloop::remove_watches() {
    while (!watches_.empty()) {
        remove(watches_.begin());
    }
}

void Mainloop::remove(Watches::iterator watch) {
    // Out of the list first: the watch may remove others while it leaves the event loop.
    Watches removed;
    removed.splice(removed.end(), watches_, watch);
    removed.front()->remove_from_csock();
    if (waiting_) {
        removed_.splice(removed_.end(), removed);
    }
}

nuvipc* Mainloop::get_nuvipc() const { return managed_ ? daemonmng_get_nuvipc() : ipc_.get(); }

bool Mainloop::send_nuvipc_message(const char* destination, const std::string& message) {
    // Deliberate: the terminating NUL is part of the message, for receivers that read a C string.
    const auto size = static_cast<unsigned>(message.size() + 1);
    if (nuvipc_msg_send(get_nuvipc(), destination, message.c_str(), size) < 0) {
        NUV_LOG(log_module, error) << "Failed to send nuvipc message " << impl::quote(message)
                                   << " to destination " << impl::quote(destination);
        return false;
    }
    return true;
}

bool Mainloop::send_nuvipc_event(const std::string& event, const void* data, unsigned size) {
    if (nuvipc_event_send(get_nuvipc(), event.c_str(), data, size) < 0) {
        NUV_LOG(log_module, error) << "Failed to send nuvipc event " << impl::quote(event)
                                   << " with parameter of size " << size;
        return false;
    }
    return true;
}

int Mainloop::register_nuvipc_event_notifier(const char* event, nuvipc_event_callback callback,
                                             void* ctx) {
    return nuvipc_event_register_notifier(get_nuvipc(), event, callback, ctx);
}

int Mainloop::unregister_nuvipc_event_notifier(const char* event) noexcept {
    return nuvipc_event_unregister_notifier(get_nuvipc(), event);
}

std::shared_ptr<AicmdModule> Mainloop::create_aicmd_module(const std::string& name, void* ctx) {
    return aicmd_->create_module(name, ctx);
}

std::shared_ptr<AicmdModule> Mainloop::get_aicmd_module(const std::string& name) const {
    return aicmd_->get_module(name);
}

bool Mainloop::remove_aicmd_module(const std::string& name) { return aicmd_->remove_module(name); }

void Mainloop::on_second_timer() {
    slab_reap();
    second_timer_.start(HOUSEKEEPING_PERIOD, [this] { on_second_timer(); });
}

}  // namespace nuv::daemon

// SPDX-License-Identifier: Apache-2.0
// The event loop and its timers beside epoll alone, libevent, libuv and sd-event: the same event
// descriptors, one of which is ready in each pass, and the same timers.
#include <benchmark/benchmark.h>
#include <event2/event.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/resource.h>
#include <systemd/sd-event.h>
#include <unistd.h>
#include <uv.h>

#include <cstdint>
#include <deque>
#include <vector>

#include "nuv/time/timer.hpp"
#include "nuv_platform/csock.h"
#include "nuv_platform/ctimer.h"

namespace {

void handle(int fd) {
    std::uint64_t count = 0;
    benchmark::DoNotOptimize(::read(fd, &count, sizeof count));
}

/// Event descriptors, as many as asked for or as the process may open.
class Counters {
public:
    explicit Counters(std::int64_t count) {
        rlimit limit{};
        ::getrlimit(RLIMIT_NOFILE, &limit);
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &limit);
        for (std::int64_t i = 0; i < count; ++i) {
            const int fd = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
            if (fd < 0) {
                ::close(fds.back());  // one for the loop itself
                fds.pop_back();
                break;
            }
            fds.push_back(fd);
        }
    }
    Counters(const Counters&) = delete;
    Counters& operator=(const Counters&) = delete;
    ~Counters() {
        for (const int fd : fds) {
            ::close(fd);
        }
    }
    /// Makes another one ready.
    void raise() {
        const std::uint64_t one = 1;
        benchmark::DoNotOptimize(::write(fds[next_], &one, sizeof one));
        next_ = (next_ + 7919) % fds.size();
    }

    std::vector<int> fds;

private:
    std::size_t next_ = 0;
};

template <typename Add, typename Pass>
void measure_events(benchmark::State& state, Add add, Pass pass) {
    Counters counters(state.range(0));
    for (const int fd : counters.fds) {
        add(fd);
    }
    for (auto _ : state) {
        counters.raise();
        pass();
    }
    state.counters["descriptors"] = static_cast<double>(counters.fds.size());
}

void event_nuv(benchmark::State& state) {
    csock_init();
    const auto readable = [](int fd, void*) {
        handle(fd);
        return 0;
    };
    std::vector<uint32_t> handles;
    measure_events(
        state,
        [&](int fd) {
            handles.push_back(
                csock_add_fd(fd, "benchmark", readable, nullptr, nullptr, nullptr, 0, nullptr));
        },
        [] { csock_select_with_msecs(-1); });
    csock_exit();
}

void event_epoll(benchmark::State& state) {
    const int epoll = ::epoll_create1(EPOLL_CLOEXEC);
    measure_events(
        state,
        [&](int fd) {
            epoll_event event{};
            event.events = EPOLLIN;
            event.data.fd = fd;
            ::epoll_ctl(epoll, EPOLL_CTL_ADD, fd, &event);
        },
        [&] {
            epoll_event event{};
            if (::epoll_wait(epoll, &event, 1, -1) == 1) {
                handle(event.data.fd);
            }
        });
    ::close(epoll);
}

void event_libevent(benchmark::State& state) {
    event_base* const base = event_base_new();
    std::vector<event*> events;
    measure_events(
        state,
        [&](int fd) {
            events.push_back(event_new(
                base, fd, EV_READ | EV_PERSIST, [](int ready, short, void*) { handle(ready); },
                nullptr));
            event_add(events.back(), nullptr);
        },
        [&] { event_base_loop(base, EVLOOP_ONCE); });
    for (event* const entry : events) {
        event_free(entry);
    }
    event_base_free(base);
}

void event_libuv(benchmark::State& state) {
    uv_loop_t loop{};
    uv_loop_init(&loop);
    std::deque<uv_poll_t> polls;
    measure_events(
        state,
        [&](int fd) {
            uv_poll_t& poll = polls.emplace_back();
            poll.data = reinterpret_cast<void*>(static_cast<std::intptr_t>(fd));
            uv_poll_init(&loop, &poll, fd);
            uv_poll_start(&poll, UV_READABLE, [](uv_poll_t* ready, int, int) {
                handle(static_cast<int>(reinterpret_cast<std::intptr_t>(ready->data)));
            });
        },
        [&] { uv_run(&loop, UV_RUN_ONCE); });
    for (uv_poll_t& poll : polls) {
        uv_poll_stop(&poll);
        uv_close(reinterpret_cast<uv_handle_t*>(&poll), nullptr);
    }
    uv_run(&loop, UV_RUN_DEFAULT);
    uv_loop_close(&loop);
}

void event_sd_event(benchmark::State& state) {
    sd_event* loop = nullptr;
    sd_event_new(&loop);
    std::vector<sd_event_source*> sources;
    measure_events(
        state,
        [&](int fd) {
            const auto readable = [](sd_event_source*, int ready, uint32_t, void*) {
                handle(ready);
                return 0;
            };
            sd_event_add_io(loop, &sources.emplace_back(), fd, EPOLLIN, readable, nullptr);
        },
        [&] { sd_event_run(loop, UINT64_MAX); });
    for (sd_event_source* const source : sources) {
        sd_event_source_unref(source);
    }
    sd_event_unref(loop);
}

#define EVENTS(implementation)                \
    BENCHMARK(event_##implementation)         \
        ->Name("loop event/" #implementation) \
        ->RangeMultiplier(100)                \
        ->Args({1})                           \
        ->Args({100})                         \
        ->Args({1000})                        \
        ->Args({10000})
EVENTS(nuv);
EVENTS(epoll);
EVENTS(libevent);
EVENTS(libuv);
EVENTS(sd_event);

// --- timers: beside 1,000 others, with ends spread over an hour

constexpr int OTHERS = 1000;
constexpr uint32_t SPREAD_MS = 3'600'000;

uint32_t next_end() {
    static uint32_t random = 1;
    random = random * 1664525 + 1013904223;
    return 1000 + random % SPREAD_MS;
}

void arm(ctimerhandle& handle, uint32_t msecs) {
    ctimer_setup_internal(
        nullptr, &handle, CTIMER_TYPE_RELATIVE, 0, msecs, 1000, [](ctimerhandle*, void*) {},
        &handle, 0, 0);
}

/// Others that are armed for as long as it lives.
struct CtimerOthers {
    std::vector<ctimerhandle> handles = std::vector<ctimerhandle>(OTHERS);

    CtimerOthers() {
        csock_init();
        for (ctimerhandle& handle : handles) {
            arm(handle, next_end());
        }
        csock_select_with_msecs(0);
    }
    ~CtimerOthers() {
        for (ctimerhandle& handle : handles) {
            ctimer_unsetup_internal(&handle, CTIMER_TYPE_RELATIVE);
        }
        csock_exit();
    }
};

void add_remove_ctimer(benchmark::State& state) {
    const CtimerOthers others;
    ctimerhandle handle{};
    for (auto _ : state) {
        arm(handle, next_end());
        ctimer_unsetup_internal(&handle, CTIMER_TYPE_RELATIVE);
    }
}

void add_remove_nuv(benchmark::State& state) {
    const CtimerOthers others;
    nuv::time::Timer timer;
    for (auto _ : state) {
        timer.start(std::chrono::milliseconds(next_end()), [] {});
        timer.stop();
    }
}

struct LibeventOthers {
    event_base* base = event_base_new();
    std::vector<event*> events;

    LibeventOthers() {
        for (int i = 0; i < OTHERS; ++i) {
            events.push_back(make());
            add(events.back(), next_end());
        }
    }
    ~LibeventOthers() {
        for (event* const entry : events) {
            event_free(entry);
        }
        event_base_free(base);
    }
    event* make() const {
        return evtimer_new(
            base, [](int, short, void*) {}, nullptr);
    }
    static void add(event* entry, uint32_t msecs) {
        const timeval delay{msecs / 1000, msecs % 1000 * 1000};
        evtimer_add(entry, &delay);
    }
};

void add_remove_libevent(benchmark::State& state) {
    LibeventOthers others;
    event* const entry = others.make();
    for (auto _ : state) {
        LibeventOthers::add(entry, next_end());
        evtimer_del(entry);
    }
    event_free(entry);
}

struct LibuvOthers {
    uv_loop_t loop{};
    std::deque<uv_timer_t> timers;

    LibuvOthers() {
        uv_loop_init(&loop);
        for (int i = 0; i < OTHERS; ++i) {
            uv_timer_start(
                &add(), [](uv_timer_t*) {}, next_end(), 0);
        }
    }
    ~LibuvOthers() {
        for (uv_timer_t& timer : timers) {
            uv_close(reinterpret_cast<uv_handle_t*>(&timer), nullptr);
        }
        uv_run(&loop, UV_RUN_DEFAULT);
        uv_loop_close(&loop);
    }
    uv_timer_t& add() {
        uv_timer_t& timer = timers.emplace_back();
        uv_timer_init(&loop, &timer);
        return timer;
    }
};

void add_remove_libuv(benchmark::State& state) {
    LibuvOthers others;
    uv_timer_t& timer = others.add();
    for (auto _ : state) {
        uv_timer_start(
            &timer, [](uv_timer_t*) {}, next_end(), 0);
        uv_timer_stop(&timer);
    }
}

// A hundred timers that end at once, armed and fired in one pass.
constexpr int BATCH = 100;

void fire_ctimer(benchmark::State& state) {
    const CtimerOthers others;
    std::vector<ctimerhandle> handles(BATCH);
    for (auto _ : state) {
        for (ctimerhandle& handle : handles) {
            arm(handle, 0);
        }
        csock_select_with_msecs(0);
    }
}

void fire_nuv(benchmark::State& state) {
    const CtimerOthers others;
    std::vector<nuv::time::Timer> timers(BATCH);
    for (auto _ : state) {
        for (nuv::time::Timer& timer : timers) {
            timer.start(std::chrono::seconds(0), [] {});
        }
        csock_select_with_msecs(0);
    }
}

void fire_libevent(benchmark::State& state) {
    LibeventOthers others;
    std::vector<event*> events;
    for (int i = 0; i < BATCH; ++i) {
        events.push_back(others.make());
    }
    for (auto _ : state) {
        for (event* const entry : events) {
            LibeventOthers::add(entry, 0);
        }
        event_base_loop(others.base, EVLOOP_ONCE | EVLOOP_NONBLOCK);
    }
    for (event* const entry : events) {
        event_free(entry);
    }
}

void fire_libuv(benchmark::State& state) {
    LibuvOthers others;
    std::vector<uv_timer_t*> timers;
    for (int i = 0; i < BATCH; ++i) {
        timers.push_back(&others.add());
    }
    for (auto _ : state) {
        for (uv_timer_t* const timer : timers) {
            uv_timer_start(
                timer, [](uv_timer_t*) {}, 0, 0);
        }
        uv_run(&others.loop, UV_RUN_NOWAIT);
    }
}

BENCHMARK(add_remove_nuv)->Name("timer add and remove/nuv");
BENCHMARK(add_remove_ctimer)->Name("timer add and remove/ctimer");
BENCHMARK(add_remove_libevent)->Name("timer add and remove/libevent");
BENCHMARK(add_remove_libuv)->Name("timer add and remove/libuv");
BENCHMARK(fire_nuv)->Name("100 timers added and fired/nuv");
BENCHMARK(fire_ctimer)->Name("100 timers added and fired/ctimer");
BENCHMARK(fire_libevent)->Name("100 timers added and fired/libevent");
BENCHMARK(fire_libuv)->Name("100 timers added and fired/libuv");

}  // namespace

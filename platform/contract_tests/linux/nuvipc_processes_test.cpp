// SPDX-License-Identifier: Apache-2.0
// What nuvipc.h promises between processes that die, fork, lie and run out of things.
#include <dirent.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "nuv_platform/clock.h"
#include "nuv_platform/clog.h"
#include "nuv_platform/csock.h"
#include "nuv_platform/nuvipc.h"

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;
using testing::HasSubstr;

constexpr int64_t SECOND_NS = 1'000'000'000;
#ifdef NUV_EMULATED
constexpr bool EMULATED = true;
#else
constexpr bool EMULATED = false;
#endif

fs::path folder() { return std::getenv("NUV_RUNTIME_DIR"); }

// Passes until it is so. False after 10 s.
bool pass_until(const std::function<bool()>& done) {
    const int64_t end = nuv_clock_monotonic_ns() + 10 * SECOND_NS;
    while (!done()) {
        if (nuv_clock_monotonic_ns() > end || csock_select_with_msecs(20) != 0) {
            return false;
        }
    }
    return true;
}

// Keeps what it gets.
struct Endpoint {
    explicit Endpoint(const char* name) : ipc(nuvipc_create(name)) {
        EXPECT_NE(ipc, nullptr);
        nuvipc_msg_register(ipc, on_message, this, 0);
    }
    ~Endpoint() { nuvipc_destroy(ipc); }
    Endpoint(const Endpoint&) = delete;
    Endpoint& operator=(const Endpoint&) = delete;

    static void on_message(nuvipc* /*ipc*/, const char* sender, void* data, unsigned size,
                           void* ctx) {
        static_cast<Endpoint*>(ctx)->take(std::string(sender) + ": " +
                                          std::string(static_cast<const char*>(data), size));
    }
    static void on_event(nuvipc* /*ipc*/, const char* event, void* data, unsigned size, void* ctx) {
        static_cast<Endpoint*>(ctx)->take("[" + std::string(event) + "] " +
                                          std::string(static_cast<const char*>(data), size));
    }
    void take(std::string text) {
        got.push_back(std::move(text));
        then(got.back());
    }

    int send(const char* to, const std::string& data) const {
        return nuvipc_msg_send(ipc, to, data.data(), static_cast<unsigned>(data.size()));
    }
    bool wait_for(std::size_t count) {
        return pass_until([&] { return got.size() >= count; });
    }

    nuvipc* ipc;
    Lines got;
    std::function<void(const std::string&)> then = [](const std::string&) {};
};

// A process that runs `body`, and is killed with its object.
class Process {
public:
    explicit Process(const std::function<void()>& body) : pid_(::fork()) {
        if (pid_ == 0) {
            body();
            ::_exit(testing::Test::HasFailure() ? 1 : 0);
        }
    }
    ~Process() { kill(); }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    void kill() {
        if (pid_ > 0) {
            ::kill(pid_, SIGKILL);
            wait();
        }
    }
    int wait() {
        int status = -1;
        ::waitpid(std::exchange(pid_, -1), &status, 0);
        return status;
    }
    pid_t pid() const { return pid_; }

private:
    pid_t pid_;
};

// Runs as a daemon of its own: what the parent had is given up first.
void in_own_loop(const std::function<void()>& body) {
    csock_exit();
    if (csock_init() == 0) {
        body();
    }
}

std::optional<nuvipc_endpoint> listed(const std::string& name) {
    struct Search {
        std::string name;
        std::optional<nuvipc_endpoint> found;
    } search{name, {}};
    const auto each = [](const nuvipc_endpoint* endpoint, void* ctx) {
        auto& wanted = *static_cast<Search*>(ctx);
        if (wanted.name == endpoint->name) {
            wanted.found = *endpoint;
        }
        return 0;
    };
    EXPECT_EQ(nuvipc_list(each, &search), 0);
    return search.found;
}

bool wait_until_listed(const char* name) {
    return pass_until([&] {
        const auto endpoint = listed(name);
        return endpoint && endpoint->alive != 0;
    });
}

mode_t mode(const std::string& file) {
    struct stat status {};
    return ::lstat((folder() / file).c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

std::size_t open_descriptors() {
    const fs::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

class NuvipcProcesses : public testing::Test {
protected:
    void SetUp() override {
        clogger_disable_stderr(clogger_get(nullptr));
        ASSERT_EQ(clogger_add_function(clogger_get(nullptr), keep, &log, 0, 31, 0), 0);
        ASSERT_EQ(csock_init(), 0);
    }
    void TearDown() override {
        csock_exit();
        clogger_rm_function(clogger_get(nullptr), keep, &log);
        clogger_enable_stderr(clogger_get(nullptr), 31, 0);
    }
    static void keep(void* ctx, const char* line) { static_cast<std::string*>(ctx)->append(line); }

    std::string log;
};

// A connection below the contract.
class Raw {
public:
    explicit Raw(const std::string& name)
        : fd_(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = folder() / name;
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        connected_ =
            ::connect(fd_, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    ~Raw() { ::close(fd_); }
    Raw(const Raw&) = delete;
    Raw& operator=(const Raw&) = delete;

    bool connected() const { return connected_; }
    bool closed() const {
        char octet = 0;
        const ssize_t count = ::recv(fd_, &octet, 1, 0);
        return count == 0 || (count < 0 && errno != EAGAIN);
    }
    void send(const std::string& frame, const std::vector<int>& descriptors = {}) const {
        iovec part{const_cast<char*>(frame.data()), frame.size()};
        alignas(cmsghdr) std::array<char, CMSG_SPACE(8 * sizeof(int))> control{};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        if (!descriptors.empty()) {
            const std::size_t octets = descriptors.size() * sizeof(int);
            message.msg_control = control.data();
            message.msg_controllen = CMSG_SPACE(octets);
            cmsghdr* const header = CMSG_FIRSTHDR(&message);
            header->cmsg_level = SOL_SOCKET;
            header->cmsg_type = SCM_RIGHTS;
            header->cmsg_len = CMSG_LEN(octets);
            std::memcpy(CMSG_DATA(header), descriptors.data(), octets);
        }
        ::sendmsg(fd_, &message, MSG_NOSIGNAL);  // fails when it was closed meanwhile
    }

private:
    int fd_;
    bool connected_ = false;
};

std::string frame(char kind, const std::string& name, const std::string& data, uint32_t size,
                  bool large = false) {
    std::string octets = {kind, static_cast<char>(name.size()), static_cast<char>(large), 0};
    for (unsigned shift = 0; shift < 32; shift += 8) {
        octets += static_cast<char>(size >> shift);
    }
    return octets + data + name;
}

constexpr char HELLO = 1;
constexpr char MESSAGE = 2;
constexpr char EVENT = 3;
constexpr char CONFIRM = 4;
constexpr char DESCRIPTOR = 5;

TEST_F(NuvipcProcesses, NameBelongsToOneLivingOwner) {
    const mode_t before = ::umask(077);
    fs::remove(folder());
    Process owner([] {
        in_own_loop([] {
            const Endpoint endpoint("name");
            nuvipc_event_register_notifier(endpoint.ipc, "e", Endpoint::on_event, nullptr);
            pass_until([] { return false; });
        });
    });
    ASSERT_TRUE(wait_until_listed("name"));
    EXPECT_TRUE(pass_until([] { return fs::exists(folder() / "name.events"); }));
    ::umask(before);
    EXPECT_EQ(mode("."), 03770U);
    EXPECT_EQ(mode("name"), 0660U);
    EXPECT_EQ(mode("name.lock"), 0640U);
    EXPECT_EQ(mode("name.events"), 0640U);
    EXPECT_EQ(listed("name")->pid, owner.pid());
    EXPECT_EQ(listed("name")->mode, 0660U);
    EXPECT_EQ(nuvipc_create("name"), nullptr);
    EXPECT_THAT(log, HasSubstr("endpoint \"name\" cannot be created: it has a living owner"));

    const Endpoint sender("sender");
    EXPECT_EQ(sender.send("name", "x"), 0);
    owner.kill();
    EXPECT_EQ(listed("name")->alive, 0);
    EXPECT_EQ(sender.send("name", "x"), -ECONNREFUSED);
    EXPECT_EQ(nuvipc_event_send(sender.ipc, "e", "x", 1), 0) << "the dead do not count";
    {
        Endpoint next("name");
        EXPECT_FALSE(fs::exists(folder() / "name.events")) << "those of the last owner";
        EXPECT_EQ(listed("name")->pid, ::getpid());
        EXPECT_EQ(sender.send("name", "y"), 0);
        EXPECT_TRUE(next.wait_for(1));
    }
    EXPECT_FALSE(fs::exists(folder() / "name"));
    EXPECT_TRUE(fs::exists(folder() / "name.lock"));
    EXPECT_FALSE(listed("name"));
}

// The peer echoes each number and sends events in between; it dies at any moment, as receiver, as
// sender, and while it starts.
TEST_F(NuvipcProcesses, PeersMayBeKilledAtAnyMoment) {
    using Counter = std::atomic<uint32_t>;
    auto* const handled = static_cast<Counter*>(
        ::mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    Endpoint survivor("survivor");
    ASSERT_EQ(nuvipc_event_register_notifier(survivor.ipc, "tick", Endpoint::on_event, &survivor),
              0);
    constexpr uint32_t PER_LIFE = 1'000'000;
    uint32_t last_echo = 0;
    unsigned ticks = 0;
    bool in_order = true;
    survivor.then = [&](const std::string& text) {
        if (text.starts_with("peer: ")) {
            const auto number = static_cast<uint32_t>(std::stoul(text.substr(6)));
            // What a dead peer sent may still come when the next one has begun.
            const bool same_life = number / PER_LIFE == last_echo / PER_LIFE;
            in_order = in_order && (number > last_echo || !same_life) && number <= handled->load();
            last_echo = number;
        } else {
            ++ticks;
        }
        survivor.got.clear();
    };
    uint32_t number = 0;
    std::vector<unsigned> results(3);
    for (unsigned life = 0; life < 200; ++life) {
        number = life * PER_LIFE;
        Process peer([&] {
            nuvipc_destroy(survivor.ipc);  // does nothing to the parent's
            in_own_loop([&] {
                Endpoint own("peer");
                own.then = [&](const std::string& text) {
                    handled->store(static_cast<uint32_t>(std::stoul(text.substr(10))));
                    own.send("survivor", text.substr(10));
                    nuvipc_event_send(own.ipc, "tick", std::string(70'000, 't').data(), 70'000);
                    own.got.clear();
                };
                nuvipc_event_send(own.ipc, "tick", "first", 5);
                pass_until([] { return false; });
            });
        });
        // Some die while they start, the others once they are at work.
        const unsigned before = ticks;
        ASSERT_TRUE(life % 4 == 0 || pass_until([&] { return ticks != before; }));
        const int64_t end = nuv_clock_monotonic_ns() + int64_t{life * 7919 % 400} * 10'000;
        while (nuv_clock_monotonic_ns() < end) {
            const int result = survivor.send("peer", std::to_string(++number));
            ++results[result >= 0 ? 0 : result == -EAGAIN ? 1 : 2];
            EXPECT_TRUE(result >= 0 || result == -EAGAIN || result == -ECONNREFUSED ||
                        result == -ENOENT)
                << result;
            ASSERT_EQ(csock_select_with_msecs(0), 0);
        }
        peer.kill();
    }
    EXPECT_TRUE(in_order);
    EXPECT_GT(last_echo, 0U);
    EXPECT_GT(ticks, 0U);
    EXPECT_GT(results[0], 0U);
    EXPECT_GT(results[2], 0U);
    EXPECT_TRUE(pass_until([] { return open_descriptors() < 20; }))
        << "connections of the dead are closed";
    ::munmap(handled, 4096);
}

TEST_F(NuvipcProcesses, UnreadMessagesDieWithTheirReceiverAndThatIsLogged) {
    Endpoint sender("sender");
    Process receiver([&] {
        nuvipc_destroy(sender.ipc);
        in_own_loop([] {
            const Endpoint own("receiver");
            own.send("sender", "the last words");
            ::pause();
        });
    });
    ASSERT_TRUE(sender.wait_for(1));
    EXPECT_EQ(sender.send("receiver", "unread"), 0);
    receiver.kill();
    EXPECT_EQ(sender.send("receiver", "x"), -ECONNREFUSED);
    EXPECT_TRUE(pass_until([&] { return !log.empty(); }));
    EXPECT_THAT(log, HasSubstr("\"receiver\" has gone without reading all that was sent to it"));
}

TEST_F(NuvipcProcesses, RestartedSenderReachesThoseWhoRegisteredBefore) {
    Endpoint subscriber("subscriber");
    ASSERT_EQ(nuvipc_event_register_notifier(subscriber.ipc, "e", Endpoint::on_event, &subscriber),
              0);
    for (std::size_t life = 1; life <= 3; ++life) {
        Process sender([&] {
            nuvipc_destroy(subscriber.ipc);
            in_own_loop([] {
                const Endpoint own("sender");
                EXPECT_EQ(nuvipc_event_send(own.ipc, "e", "x", 1), 0);
            });
        });
        EXPECT_EQ(sender.wait(), 0);
        EXPECT_TRUE(subscriber.wait_for(life));
    }
}

TEST_F(NuvipcProcesses, ForkedChildrenHaveNothing) {
    Endpoint parent("parent");
    Endpoint peer("peer");
    EXPECT_EQ(parent.send("peer", "1"), 0);
    ASSERT_TRUE(peer.wait_for(1));
    const std::size_t descriptors = open_descriptors();
    Process child([&] {
        EXPECT_EQ(csock_select_with_msecs(0), -ECHILD);
        EXPECT_EQ(csock_init(), -ECHILD);
        EXPECT_EQ(csock_add_fd(
                      0, "", [](int, void*) { return 0; }, nullptr, nullptr, nullptr, 0, nullptr),
                  0U);
        EXPECT_EQ(csock_remove_fd(1), -ECHILD);
        EXPECT_EQ(csock_fd_blocking(1), -ECHILD);
        EXPECT_EQ(nuvipc_create("other"), nullptr);
        EXPECT_EQ(parent.send("peer", "x"), -ECHILD);
        EXPECT_EQ(nuvipc_event_send(parent.ipc, "e", "x", 1), -ECHILD);
        EXPECT_EQ(nuvipc_msg_unregister(parent.ipc), -ECHILD);
        EXPECT_EQ(nuvipc_event_register_notifier(parent.ipc, "e", Endpoint::on_event, nullptr),
                  -ECHILD);
        // Both endpoints: listener, lock, spare, folder; a connection; the loop.
        EXPECT_EQ(open_descriptors(), descriptors - 11);
        nuvipc_destroy(std::exchange(parent.ipc, nullptr));
        nuvipc_destroy(std::exchange(peer.ipc, nullptr));
        in_own_loop([] {
            Endpoint own("other");
            EXPECT_EQ(own.send("peer", "from the child"), 0);
        });
    });
    EXPECT_EQ(child.wait(), 0);
    EXPECT_TRUE(fs::exists(folder() / "parent"));
    EXPECT_EQ(parent.send("peer", "2"), 0);
    ASSERT_TRUE(peer.wait_for(3));
    EXPECT_THAT(peer.got,
                testing::UnorderedElementsAre("parent: 1", "other: from the child", "parent: 2"));
}

TEST_F(NuvipcProcesses, ChildrenThatOutliveAnOwnerDoNotHoldItsName) {
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
    Process owner([&] {
        in_own_loop([&] {
            const Endpoint own("name");
            if (::fork() == 0) {
                const pid_t child = ::getpid();
                EXPECT_EQ(::write(pipe[1], &child, sizeof child), ssize_t{sizeof child});
                ::alarm(20);
                for (;;) {
                    ::pause();
                }
            }
            pass_until([] { return false; });
        });
    });
    pid_t child = 0;
    ASSERT_EQ(::read(pipe[0], &child, sizeof child), ssize_t{sizeof child});
    owner.kill();
    {
        const Endpoint sender("sender");
        EXPECT_EQ(sender.send("name", "x"), -ECONNREFUSED);
        Endpoint next("name");
        EXPECT_EQ(sender.send("name", "x"), 0);
        EXPECT_TRUE(next.wait_for(1));
    }
    EXPECT_EQ(::kill(child, SIGKILL), 0) << "it was alive all the time";
    ::close(pipe[0]);
    ::close(pipe[1]);
}

TEST_F(NuvipcProcesses, BelievesNoPeer) {
    const auto memory = [](std::size_t size, bool seal) {
        const int fd = ::memfd_create("test", MFD_CLOEXEC | MFD_ALLOW_SEALING);
        EXPECT_EQ(::ftruncate(fd, static_cast<off_t>(size)), 0);
        if (seal) {
            EXPECT_EQ(::fcntl(fd, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_WRITE), 0);
        }
        return fd;
    };
    constexpr uint32_t LARGE = 70'000;
    const int sealed = memory(LARGE, true);
    const int open = memory(LARGE, false);
    const int shorter = memory(LARGE - 1, true);
    const int file = ::open((folder() / "file").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(::ftruncate(file, LARGE), 0);

    const std::string hello = frame(HELLO, "liar", "", 0);
    const std::string large = frame(MESSAGE, "", "", LARGE, true);
    const std::string announced = frame(DESCRIPTOR, "", "", 0);
    const std::string confirmation = frame(CONFIRM, "", "", 1);
    const struct {
        const char* name;
        std::vector<std::string> frames;
        std::vector<int> descriptors;  // with the last one
        const char* line;
    } rows[] = {
        {"no introduction", {frame(MESSAGE, "", "x", 1)}, {}, "did not introduce itself"},
        {"two", {hello, hello}, {}, "did not introduce itself"},
        {"too short", {"x"}, {}, "not understood"},
        {"unknown kind", {hello, frame(9, "", "", 0)}, {}, "not understood"},
        {"bad name", {frame(HELLO, "../x", "", 0)}, {}, "not understood"},
        {"bad event", {hello, frame(EVENT, "e\n", "", 0)}, {}, "not understood"},
        {"data missing", {hello, frame(MESSAGE, "", "x", 2)}, {}, "not understood"},
        {"not sent", {hello, confirmation}, {}, "confirms what was not sent"},
        {"not announced", {hello, large}, {sealed}, "not understood"},
        {"descriptor missing", {hello, announced, large}, {}, "not understood"},
        {"not wanted", {hello, announced, frame(MESSAGE, "", "x", 1)}, {sealed}, "not understood"},
        {"two descriptors", {hello, announced, large}, {sealed, sealed}, "a descriptor was lost"},
        {"eight", {hello, announced, large}, std::vector<int>(8, sealed), "a descriptor was lost"},
        {"not sealed", {hello, announced, large}, {open}, "not sealed"},
        {"too small", {hello, announced, large}, {shorter}, "not sealed"},
        {"a file", {hello, announced, large}, {file}, "not sealed"},
        {"larger than any", {hello, std::string(70'000, 'x')}, {}, "not understood"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        if (EMULATED && row.descriptors.size() > 1) {
            continue;  // the emulator takes more descriptors than it is asked for
        }
        log.clear();
        Endpoint receiver("receiver");
        ASSERT_EQ(nuvipc_event_register_notifier(receiver.ipc, "e", Endpoint::on_event, &receiver),
                  0);
        const std::size_t descriptors = open_descriptors();
        const Raw raw("receiver");
        for (const std::string& octets : row.frames) {
            const bool last = &octets == &row.frames.back();
            raw.send(octets, last ? row.descriptors : std::vector<int>());
        }
        EXPECT_TRUE(pass_until([&] { return raw.closed(); }));
        EXPECT_EQ(open_descriptors(), descriptors + 1) << "its own";
        EXPECT_EQ(receiver.got, Lines{});
        EXPECT_THAT(log, HasSubstr("endpoint \"receiver\": closed the connection with \""));
        EXPECT_THAT(log, HasSubstr(row.line));
    }

    // Who is not the owner of the name that it gives has no name.
    Endpoint receiver("receiver");
    const Endpoint victim("victim");
    const Process liar([&] {
        const Raw raw("receiver");
        raw.send(frame(HELLO, "victim", "", 0));
        raw.send(frame(MESSAGE, "", "I am the victim", 15));
        raw.send(announced);
        raw.send(large, {sealed});
        ::pause();
    });
    ASSERT_TRUE(receiver.wait_for(2));
    EXPECT_EQ(receiver.got[0], ": I am the victim");
    EXPECT_EQ(receiver.got[1].size(), LARGE + 2);
    EXPECT_EQ(receiver.send("victim", "x"), 0) << "reaches the victim";
    EXPECT_TRUE(pass_until([&] { return victim.got.size() == 1; }));
    for (const int fd : {sealed, open, shorter, file}) {
        ::close(fd);
    }
}

TEST_F(NuvipcProcesses, AtTheDescriptorLimitConnectionsAreRefusedUntilThereIsRoom) {
    Endpoint receiver("receiver");
    const std::vector<std::unique_ptr<Raw>> clients = [] {
        std::vector<std::unique_ptr<Raw>> made;
        for (int i = 0; i < 3; ++i) {
            made.push_back(std::make_unique<Raw>("receiver"));
            EXPECT_TRUE(made.back()->connected());
        }
        return made;
    }();
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    // A sanitizer that meets an output for the first time needs descriptors.
    clogmod__warn(clogmod_get_or_alloc("test"), nullptr, nullptr, 0, "soon out of descriptors");
    const int next = ::dup(0);
    ::close(next);
    const rlimit none{static_cast<rlim_t>(next), before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    EXPECT_TRUE(pass_until([&] {
        return std::all_of(clients.begin(), clients.end(),
                           [](const auto& client) { return client->closed(); });
    }));
    const int64_t begin = nuv_clock_monotonic_ns();
    EXPECT_EQ(csock_select_with_msecs(50), 0);
    EXPECT_GE(nuv_clock_monotonic_ns() - begin, 40'000'000) << "nothing spins";
    EXPECT_EQ(receiver.send("nobody", "x"), -EMFILE);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_THAT(log, HasSubstr("refused a connection: Too many open files"));
    EXPECT_EQ(log.find("refused a connection"), log.rfind("refused a connection"));

    const Endpoint sender("sender");
    EXPECT_EQ(sender.send("receiver", "x"), 0);
    EXPECT_TRUE(receiver.wait_for(1));
}

TEST_F(NuvipcProcesses, FolderMayBeFullOrRemoved) {
    Endpoint receiver("receiver");
    const Endpoint sender("sender");
    EXPECT_EQ(sender.send("receiver", "1"), 0);
    // A file system without room, as far as writing is concerned.
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto old = ::signal(SIGXFSZ, SIG_IGN);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &none), 0);
    EXPECT_EQ(nuvipc_event_register_notifier(receiver.ipc, "e", Endpoint::on_event, nullptr),
              -EFBIG);
    EXPECT_EQ(nuvipc_create("another"), nullptr);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    ::signal(SIGXFSZ, old);
    EXPECT_THAT(log, HasSubstr("endpoint \"receiver\": event \"e\" cannot be registered: File too "
                               "large"));
    EXPECT_THAT(log, HasSubstr("endpoint \"another\" cannot be created: File too large"));

    fs::remove_all(folder());
    log.clear();
    EXPECT_EQ(sender.send("receiver", "2"), 0) << "who has met goes on";
    EXPECT_TRUE(receiver.wait_for(2));
    EXPECT_EQ(sender.send("sender2", "x"), -ENOENT);
    EXPECT_EQ(nuvipc_event_register_notifier(sender.ipc, "e", Endpoint::on_event, nullptr),
              -ENOENT);
    EXPECT_EQ(nuvipc_event_send(sender.ipc, "e", "x", 1), 0);
    EXPECT_THAT(log, HasSubstr("\"sender2\" cannot be found: the runtime folder was removed"));
    EXPECT_THAT(log, HasSubstr("event \"e\" cannot be registered: the runtime folder was removed"));
    const Endpoint fresh("receiver");  // in a new folder
    EXPECT_TRUE(listed("receiver"));
}

// The modes are opened to all, so that the credentials alone decide.
TEST_F(NuvipcProcesses, StrangersAreRefusedAndMembersAreNot) {
    if (::geteuid() != 0) {
        const std::string self = fs::read_symlink("/proc/self/exe");
        const std::string command = "unshare --user --map-root-user --map-auto '" + self +
                                    "' --gtest_filter=*StrangersAreRefused*";
        if (std::system("unshare --user --map-root-user --map-auto true 2>/dev/null") != 0) {
            GTEST_SKIP() << "SKIPPED: no second user: neither root nor unshare --map-auto";
        }
        EXPECT_EQ(std::system(command.c_str()), 0);
        return;
    }
    constexpr gid_t MEMBERS = 4242;
    constexpr uid_t STRANGER = 4343;
    ASSERT_EQ(::chown(folder().c_str(), 0, MEMBERS), 0);
    fs::permissions(folder(), fs::perms::all);
    Endpoint owner("owner");
    fs::permissions(folder() / "owner", fs::perms::all);
    fs::permissions(folder() / ".counter", fs::perms::all);
    for (const bool member : {false, true}) {
        SCOPED_TRACE(member);
        Process caller([&] {
            nuvipc_destroy(std::exchange(owner.ipc, nullptr));
            const gid_t group = MEMBERS;
            EXPECT_EQ(::setgroups(member ? 1 : 0, &group), 0);
            EXPECT_EQ(::setresgid(STRANGER, STRANGER, STRANGER), 0);
            EXPECT_EQ(::setresuid(STRANGER, STRANGER, STRANGER), 0);
            const Raw raw("owner");
            raw.send(frame(HELLO, "caller", "", 0));
            raw.send(frame(MESSAGE, "", "x", 1));
            while (!raw.closed()) {
                ::usleep(1000);
            }
        });
        if (member) {
            EXPECT_TRUE(owner.wait_for(1));
        } else {
            EXPECT_TRUE(pass_until([&] { return !log.empty(); }));
            EXPECT_EQ(caller.wait(), 0);
            EXPECT_THAT(log, HasSubstr("endpoint \"owner\": refused a stranger"));
            EXPECT_EQ(owner.got, Lines{});
        }
    }

    // Nor does a sender talk to a stranger.
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe2(pipe.data(), O_CLOEXEC), 0);
    const Process impostor([&] {
        nuvipc_destroy(std::exchange(owner.ipc, nullptr));
        EXPECT_EQ(::setgroups(0, nullptr), 0);
        EXPECT_EQ(::setresgid(STRANGER, STRANGER, STRANGER), 0);
        EXPECT_EQ(::setresuid(STRANGER, STRANGER, STRANGER), 0);
        const int fd = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = folder() / "impostor";
        path.copy(address.sun_path, sizeof address.sun_path - 1);
        EXPECT_EQ(::bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(::listen(fd, 1), 0);
        EXPECT_EQ(::write(pipe[1], "x", 1), 1);
        ::pause();
    });
    char octet = 0;
    EXPECT_EQ(::read(pipe[0], &octet, 1), 1);
    EXPECT_EQ(owner.send("impostor", "secret"), -EACCES);
    ::close(pipe[0]);
    ::close(pipe[1]);
}

}  // namespace

// SPDX-License-Identifier: Apache-2.0
// The C functions of aicmd.h that work on a session.
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "platform/common/aicmd_server.hpp"
#include "platform/common/allocator.hpp"

extern "C" {

int aicmd_printf(aicmd_session* session, const char* fmt, ...) {
    if (session == nullptr) {
        return -EINVAL;
    }
    std::va_list args;
    va_start(args, fmt);
    const int result = session->print(fmt, args);
    va_end(args);
    return result;
}

void* aicmd_session_ctx(aicmd_session* session) {
    return session != nullptr ? session->ctx() : nullptr;
}

int aicmd_help(aicmd_session* session, int argc, char** argv) {
    return session->help(argc > 1 ? argv[1] : "");
}

int aicmd_quit(aicmd_session* session, int /*argc*/, char** /*argv*/) {
    session->end();
    return 0;
}

#ifdef NUV_ALLOCATOR_STATISTICS

int aicmd_slabdump(aicmd_session* session, int /*argc*/, char** /*argv*/) {
    // NOLINTBEGIN(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory): these are the owners
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    // NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)
    char* memory = nullptr;
    std::size_t size = 0;
    std::unique_ptr<std::FILE, Close> file(::open_memstream(&memory, &size));
    if (file == nullptr) {
        return -errno;
    }
    const int result = ::malloc_info(0, file.get()) == 0 ? 0 : -errno;
    file.reset();
    const std::unique_ptr<char, Free> text(memory);
    if (result == 0) {
        aicmd_printf(session, "%s", text.get());
    }
    return result;
}

int aicmd_slabshow(aicmd_session* session, int /*argc*/, char** /*argv*/) {
    const auto info = ::mallinfo2();
    const struct {
        const char* name;
        std::uint64_t octets;
    } rows[] = {
        {"in use", info.uordblks},
        {"free", info.fordblks},
        {"from the system", info.arena},
        {"mapped", info.hblkhd},
    };
    for (const auto& row : rows) {
        aicmd_printf(session, "%-16s%10llu KiB\n", row.name,
                     static_cast<unsigned long long>(row.octets / 1024));
    }
    return 0;
}

#else

int aicmd_slabdump(aicmd_session* /*session*/, int /*argc*/, char** /*argv*/) { return -ENOSYS; }
int aicmd_slabshow(aicmd_session* /*session*/, int /*argc*/, char** /*argv*/) { return -ENOSYS; }

#endif

}  // extern "C"

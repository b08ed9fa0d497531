// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/chunk_io_manipulator.hpp"

#include <pthread.h>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <ostream>
#include <string_view>
#include <unordered_map>

#include "internal/optional_platform.hpp"

namespace nuv::logging {

namespace {

struct NameHash : std::hash<std::string_view> {
    using is_transparent = void;
};

struct ChunkTable {
    std::mutex mutex;
    std::unordered_map<std::string, std::uint32_t, NameHash, std::equal_to<>> sizes;

    // Never destroyed: static objects of other files log from their destructors. Every record looks
    // here, so neither this nor find() may want memory.
    static ChunkTable& get() {
        alignas(ChunkTable) static std::array<std::byte, sizeof(ChunkTable)> storage;
        static auto* const table = std::construct_at(reinterpret_cast<ChunkTable*>(storage.data()));
        return *table;
    }

    std::uint32_t find(std::string_view name) {
        const std::lock_guard lock(mutex);
        const auto found = sizes.find(name);
        return found == sizes.end() ? 0 : found->second;
    }
};

// So that no forked child finds the table locked. Done before anything else: a platform whose own
// handlers wait for callbacks, which may wait for this lock, has to be asked before this is locked,
// and the handlers that were added last are asked first.
[[gnu::constructor(101)]] void watch_forks() {
    const auto unlock = [] { ChunkTable::get().mutex.unlock(); };
    ::pthread_atfork([] { ChunkTable::get().mutex.lock(); }, unlock, unlock);
}

}  // namespace

int ChunkIOManipulator::xalloc_value() {
    static const int index = std::ios_base::xalloc();
    return index;
}

std::ostream& operator<<(std::ostream& os, ChunkIOManipulator chunk) {
    // A long has 32 bits on some machines: there the value wraps, and wraps back when it is read.
    os.iword(ChunkIOManipulator::xalloc_value()) = static_cast<long>(chunk.get_size());
    return os;
}

std::uint32_t get_default_clogger_chunking(const std::string& logger_name) {
    return ChunkTable::get().find(logger_name);
}

void set_default_clogger_chunking(const std::string& logger_name, std::uint32_t size) {
    auto& table = ChunkTable::get();
    const std::lock_guard lock(table.mutex);
    table.sizes[logger_name] = size;
}

std::uint32_t get_clogger_chunking(const clogger* logger) {
    const char* const name = impl::call_if_present(clogger_get_name, logger);
    return name == nullptr ? 0 : ChunkTable::get().find(name);
}

std::uint32_t get_clogger_chunking(clogmod* module) {
    return get_clogger_chunking(impl::call_if_present(clogmod_get_clogger, module));
}

}  // namespace nuv::logging

// SPDX-License-Identifier: Apache-2.0
#include "nuv/logging/chunk_io_manipulator.hpp"

#include <memory>
#include <mutex>
#include <ostream>
#include <unordered_map>

#include "internal/optional_platform.hpp"

namespace nuv::logging {

namespace {

struct ChunkTable {
    std::mutex mutex;
    std::unordered_map<std::string, std::uint32_t> sizes;

    // Never destroyed: static objects of other files log from their destructors.
    static ChunkTable& get() {
        static ChunkTable* const table = std::make_unique<ChunkTable>().release();
        return *table;
    }
};

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
    auto& table = ChunkTable::get();
    const std::lock_guard lock(table.mutex);
    const auto found = table.sizes.find(logger_name);
    return found == table.sizes.end() ? 0 : found->second;
}

void set_default_clogger_chunking(const std::string& logger_name, std::uint32_t size) {
    auto& table = ChunkTable::get();
    const std::lock_guard lock(table.mutex);
    table.sizes[logger_name] = size;
}

std::uint32_t get_clogger_chunking(const clogger* logger) {
    const char* const name = impl::call_if_present(clogger_get_name, logger);
    return name == nullptr ? 0 : get_default_clogger_chunking(name);
}

std::uint32_t get_clogger_chunking(clogmod* module) {
    return get_clogger_chunking(impl::call_if_present(clogmod_get_clogger, module));
}

}  // namespace nuv::logging

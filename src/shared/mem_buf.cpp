// SPDX-License-Identifier: Apache-2.0
#include "nuv/mem_buf.hpp"

namespace nuv {

MemBuf::MemBuf(std::span<const std::uint8_t> bytes) : std::stringbuf(std::ios_base::in) {
    // The get area is of type char*, yet a buffer opened for input only never writes to it.
    auto* begin = const_cast<char*>(reinterpret_cast<const char*>(bytes.data()));
    setg(begin, begin, begin + bytes.size());
}

}  // namespace nuv

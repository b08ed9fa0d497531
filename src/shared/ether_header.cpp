// SPDX-License-Identifier: Apache-2.0
#include "nuv/ether_header.hpp"

#include <array>
#include <charconv>
#include <ostream>
#include <string_view>
#include <tuple>
#include <utility>

namespace nuv {

void EtherHeader::swap(EtherHeader& other) noexcept { std::swap(*this, other); }

std::strong_ordering EtherHeader::operator<=>(const EtherHeader& other) const noexcept {
    return std::tie(dest_addr_, src_addr_, ethertype_) <=>
           std::tie(other.dest_addr_, other.src_addr_, other.ethertype_);
}

std::ostream& operator<<(std::ostream& os, const EtherHeader& header) {
    // Unformatted output: it needs nothing of the stream's format and leaves it alone.
    const auto write = [&os](std::string_view text) {
        os.write(text.data(), static_cast<std::streamsize>(text.size()));
    };
    std::array<char, 4> ethertype{};
    const char* end =
        std::to_chars(ethertype.begin(), ethertype.end(), header.get_ethertype(), 16).ptr;

    write("dest address: ");
    os << header.get_dest_addr() << std::endl;
    write("src address: ");
    os << header.get_src_addr() << std::endl;
    write("ethertype: ");
    write({ethertype.begin(), end});
    return os << std::endl;
}

}  // namespace nuv

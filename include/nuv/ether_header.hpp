// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <compare>
#include <cstdint>
#include <iosfwd>

#include "nuv/export.hpp"
#include "nuv/mac_address.hpp"

namespace nuv {

/// The header of an Ethernet II frame (IEEE 802.3-2018, 3.2.6). The ethertype is kept in host byte
/// order, exactly as given: whoever puts it on the wire swaps it. Ordered by destination, source,
/// ethertype.
class NUV_EXPORT EtherHeader {
public:
    explicit EtherHeader(std::uint16_t ethertype) noexcept : ethertype_(ethertype) {}
    EtherHeader(const MACAddress& dest_addr, const MACAddress& src_addr,
                std::uint16_t ethertype) noexcept
        : dest_addr_(dest_addr), src_addr_(src_addr), ethertype_(ethertype) {}

    const MACAddress& get_dest_addr() const noexcept { return dest_addr_; }
    void set_dest_addr(const MACAddress& address) noexcept { dest_addr_ = address; }
    const MACAddress& get_src_addr() const noexcept { return src_addr_; }
    void set_src_addr(const MACAddress& address) noexcept { src_addr_ = address; }
    std::uint16_t get_ethertype() const noexcept { return ethertype_; }
    void set_ethertype(std::uint16_t ethertype) noexcept { ethertype_ = ethertype; }

    void swap(EtherHeader& other) noexcept;
    bool operator==(const EtherHeader&) const = default;
    std::strong_ordering operator<=>(const EtherHeader& other) const noexcept;

private:
    MACAddress dest_addr_;
    MACAddress src_addr_;
    std::uint16_t ethertype_;
};

/// Writes three lines, "dest address: ", "src address: " and "ethertype: ", the last in lower-case
/// hex (88cc); each is flushed. The stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const EtherHeader& header);

}  // namespace nuv

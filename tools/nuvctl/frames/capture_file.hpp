// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "file.hpp"
#include "frames/input.hpp"
#include "text/timestamp.hpp"

struct pcap;

namespace nuvctl {

/// One record of a capture.
struct Record {
    std::uint64_t number;  ///< in its file, from 1
    Timestamp time;
    std::span<const std::uint8_t> octets;  ///< what was captured; valid until the next is read
    std::size_t length;                    ///< what it had on the link, octets.size() at least
};

/// A capture file, classic pcap or pcapng, which may be compressed by gzip, read from its beginning to
/// its end.
class CaptureFile {
public:
    /// Opens the file `name`; "-" is standard input. The file ends, within a record or not, once the
    /// descriptor `stop` becomes readable; -1 is none. Throws FileError.
    explicit CaptureFile(const std::string& name, int stop = -1);

    /// The link type of its records, as libpcap numbers them.
    int link_type() const;
    /// The next record, none at the end. Throws FileError where the file is damaged.
    std::optional<Record> next();

    /// Whether records come as somebody writes them, and nobody knows how many.
    bool is_live() const { return input_.size() < 0; }
    /// Octets of the file, and how many of them were read; the size of a live one is negative.
    std::int64_t size() const { return input_.size(); }
    std::int64_t position() const { return input_.position(); }

private:
    struct Close {
        void operator()(pcap* capture) const noexcept;
    };

    /// Why libpcap failed.
    std::string reason(const char* of_libpcap) const;

    Input input_;
    std::unique_ptr<pcap, Close> capture_;
    std::uint64_t records_ = 0;
};

/// Octets of a record at most; readers take longer ones for damage.
constexpr std::size_t max_record = 65'535;
/// A capture file, classic pcap: its beginning, with the link type as libpcap numbers it, and each of its
/// records, of at most max_record octets and at a time from 1970 to 2106.
std::string capture_header(std::uint32_t link_type);
std::string capture_record(const Timestamp& time, std::span<const std::uint8_t> octets);

}  // namespace nuvctl

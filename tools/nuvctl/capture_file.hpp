// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

struct pcap;

namespace nuvctl {

/// One record of a capture.
struct Record {
    std::uint64_t number;                  ///< in its file, from 1
    std::int64_t seconds;                  ///< since 1970-01-01 00:00 UTC
    std::int32_t microseconds;             ///< 0 to 999,999
    std::span<const std::uint8_t> octets;  ///< what was captured; valid until the next is read
    std::size_t length;                    ///< what it had on the link, octets.size() at least
};

/// What is wrong with a file, in words for people, without its name.
class CaptureError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A capture file, classic pcap or pcapng, read from its beginning to its end.
class CaptureFile {
public:
    /// Opens the file `name`; "-" is standard input. Throws CaptureError.
    explicit CaptureFile(const std::string& name);

    /// The link type of its records, as libpcap numbers them.
    int link_type() const;
    /// The next record, none at the end. Throws CaptureError where the file is damaged.
    std::optional<Record> next();

    /// Whether records come as somebody writes them, and nobody knows how many.
    bool is_live() const { return size_ < 0; }
    /// Octets of the file, and how many of them were read; negative for a live one.
    std::int64_t size() const { return size_; }
    std::int64_t position() const;

private:
    struct Close {
        void operator()(pcap* capture) const noexcept;
    };

    std::unique_ptr<pcap, Close> capture_;
    std::int64_t size_ = -1;
    std::uint64_t records_ = 0;
};

}  // namespace nuvctl

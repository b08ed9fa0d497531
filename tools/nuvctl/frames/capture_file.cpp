// SPDX-License-Identifier: Apache-2.0
#include "frames/capture_file.hpp"

#include <pcap/pcap.h>

#include <algorithm>
#include <array>
#include <initializer_list>

namespace nuvctl {

void CaptureFile::Close::operator()(pcap* capture) const noexcept { pcap_close(capture); }

CaptureFile::CaptureFile(const std::string& name, int stop) : input_(name, stop) {
    if (size() == 0) {
        throw FileError("the file is empty");
    }
    File file = input_.stream();
    std::array<char, PCAP_ERRBUF_SIZE> text{};
    capture_.reset(pcap_fopen_offline(file.get(), text.data()));
    if (capture_ == nullptr) {
        throw FileError("not a capture file: " + reason(text.data()));
    }
    file.release();  // NOLINT(bugprone-unused-return-value): closed with the capture
}

namespace {

/// What editcap calls the link type.
const char* encapsulation(int link_type) {
    switch (link_type) {
        case DLT_IEEE802_11:
            return "ieee-802-11";
        case DLT_PRISM_HEADER:
            return "ieee-802-11-prism";
        case DLT_IEEE802_11_RADIO_AVS:
            return "ieee-802-11-avs";
        case DLT_PPI:
            return "ppi";
        default:
            return "ieee-802-11-radiotap";
    }
}

}  // namespace

std::string CaptureFile::reason(const char* of_libpcap) const {
    if (input_.problem() != nullptr) {
        return input_.problem();
    }
    // libpcap gives all records of a file one link type.
    const std::string text = of_libpcap;
    return text.find("different from the type of the first interface") == std::string::npos
               ? text
               : text +
                     "; extract one interface: tshark -r FILE -Y 'frame.interface_id == 0' -w ONE, "
                     "then editcap -F pcap -T " +
                     encapsulation(capture_ != nullptr ? link_type() : DLT_IEEE802_11_RADIO) +
                     " ONE ONE.pcap";
}

int CaptureFile::link_type() const { return pcap_datalink(capture_.get()); }

std::optional<Record> CaptureFile::next() {
    pcap_pkthdr* header = nullptr;
    const std::uint8_t* octets = nullptr;
    switch (pcap_next_ex(capture_.get(), &header, &octets)) {
        case 1:
            break;
        case PCAP_ERROR_BREAK:
            return std::nullopt;
        default:
            throw FileError("record " + std::to_string(records_ + 1) + ": " +
                            reason(pcap_geterr(capture_.get())));
    }
    // A classic file has unsigned seconds of 32 bits, which libpcap extends with a sign.
    constexpr int pcapng = 1;
    const bool unsigned_seconds = pcap_major_version(capture_.get()) != pcapng ||
                                  sizeof(header->ts.tv_sec) == sizeof(std::uint32_t);
    const std::int64_t seconds = unsigned_seconds ? static_cast<std::uint32_t>(header->ts.tv_sec)
                                                  : std::int64_t{header->ts.tv_sec};
    // What a damaged file says of the time may be anything.
    constexpr int second = 1'000'000;
    const std::int64_t microseconds = header->ts.tv_usec;
    const auto fraction = static_cast<std::int32_t>((microseconds % second + second) % second);
    return Record{++records_,
                  {seconds + (microseconds - fraction) / second, fraction},
                  std::span(octets, header->caplen),
                  std::max(header->len, header->caplen)};
}

namespace {

void append_little_endian(std::string& octets, std::initializer_list<std::uint32_t> words) {
    for (const std::uint32_t word : words) {
        for (unsigned shift = 0; shift < 32; shift += 8) {
            octets += static_cast<char>(word >> shift);
        }
    }
}

}  // namespace

std::string capture_header(std::uint32_t link_type) {
    constexpr std::uint32_t microseconds = 0xA1B2C3D4;
    constexpr std::uint32_t version_2_4 = 4U << 16U | 2U;
    std::string octets;
    // behind the version: time zone, accuracy, longest record
    append_little_endian(octets, {microseconds, version_2_4, 0, 0, max_record, link_type});
    return octets;
}

std::string capture_record(const Timestamp& time, std::span<const std::uint8_t> octets) {
    const auto size = static_cast<std::uint32_t>(octets.size());
    std::string record;
    append_little_endian(record, {static_cast<std::uint32_t>(time.seconds),
                                  static_cast<std::uint32_t>(time.microseconds), size, size});
    return record.append(octets.begin(), octets.end());
}

}  // namespace nuvctl

// SPDX-License-Identifier: Apache-2.0
#include "frames/capture_file.hpp"

#include <pcap/pcap.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>

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
                     "then editcap -F pcap -T ieee-802-11-radiotap ONE ONE.pcap";
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

void CaptureWriter::Close::operator()(pcap* capture) const noexcept { pcap_close(capture); }
void CaptureWriter::Close::operator()(pcap_dumper* dumper) const noexcept {
    pcap_dump_close(dumper);
}

CaptureWriter::CaptureWriter(File file, int link_type)
    : capture_(pcap_open_dead(link_type, std::numeric_limits<std::uint16_t>::max())) {
    if (capture_ == nullptr) {
        throw_errno(ENOMEM);
    }
    dumper_.reset(pcap_dump_fopen(capture_.get(), file.get()));
    if (dumper_ == nullptr) {
        throw FileError(pcap_geterr(capture_.get()));
    }
    file.release();  // NOLINT(bugprone-unused-return-value): closed with the dumper
}

bool CaptureWriter::write(const Timestamp& time, std::span<const std::uint8_t> octets) {
    pcap_pkthdr header{};
    header.ts.tv_sec = static_cast<decltype(header.ts.tv_sec)>(time.seconds);
    header.ts.tv_usec = time.microseconds;
    header.caplen = header.len = static_cast<bpf_u_int32>(octets.size());
    pcap_dump(reinterpret_cast<u_char*>(dumper_.get()), &header, octets.data());
    return pcap_dump_flush(dumper_.get()) == 0 && std::ferror(pcap_dump_file(dumper_.get())) == 0;
}

}  // namespace nuvctl

// SPDX-License-Identifier: Apache-2.0
#include "capture_file.hpp"

#include <pcap/pcap.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

namespace nuvctl {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const noexcept {
        if (file != stdin) {
            std::fclose(file);  // NOLINT(cppcoreguidelines-owning-memory): this is its owner
        }
    }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void throw_errno(int error) {
    throw CaptureError(std::generic_category().message(error));
}

}  // namespace

void CaptureFile::Close::operator()(pcap* capture) const noexcept { pcap_close(capture); }

CaptureFile::CaptureFile(const std::string& name) {
    File file(name == "-" ? stdin : std::fopen(name.c_str(), "rbe"));
    struct stat status {};
    if (file == nullptr || fstat(fileno(file.get()), &status) != 0) {
        throw_errno(errno);
    }
    if (S_ISDIR(status.st_mode)) {
        throw_errno(EISDIR);
    }
    if (S_ISREG(status.st_mode)) {
        size_ = status.st_size;
    }
    if (size_ == 0) {
        throw CaptureError("the file is empty");
    }
    std::array<char, PCAP_ERRBUF_SIZE> reason{};
    capture_.reset(pcap_fopen_offline(file.get(), reason.data()));
    if (capture_ == nullptr) {
        throw CaptureError(std::string("not a capture file: ") + reason.data());
    }
    file.release();  // NOLINT(bugprone-unused-return-value): closed with the capture
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
            throw CaptureError("record " + std::to_string(records_ + 1) + ": " +
                               pcap_geterr(capture_.get()));
    }
    // What a damaged file says of the time may be anything.
    constexpr int second = 1'000'000;
    const std::int64_t microseconds = header->ts.tv_usec;
    const auto fraction = static_cast<std::int32_t>((microseconds % second + second) % second);
    return Record{++records_, header->ts.tv_sec + (microseconds - fraction) / second, fraction,
                  std::span(octets, header->caplen), std::max(header->len, header->caplen)};
}

std::int64_t CaptureFile::position() const { return ftello(pcap_file(capture_.get())); }

}  // namespace nuvctl

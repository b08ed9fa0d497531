// SPDX-License-Identifier: Apache-2.0
// Writes the files that are made of the test vectors; with --check only compares them.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <string_view>

#include "tests/support/vectors.hpp"

namespace nuv::test {
namespace {

void append(Octets& octets, const Octets& more) {
    octets.insert(octets.end(), more.begin(), more.end());
}

void append_little_endian_32(Octets& octets, std::uint32_t value) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
        octets.push_back(static_cast<std::uint8_t>(value >> shift));
    }
}

/// The CRC of 32 bits with which an MPDU ends (IEEE Std 802.11-2020, 9.2.4.8).
std::uint32_t frame_check_sequence(const Octets& octets) {
    std::uint32_t crc = 0xFFFFFFFF;
    for (const std::uint8_t octet : octets) {
        crc ^= octet;
        for (int bit = 0; bit < 8; ++bit) {
            crc = crc >> 1U ^ ((crc & 1U) != 0 ? 0xEDB88320U : 0U);
        }
    }
    return ~crc;
}

/// Classic pcap of link type 127. Every other frame has its FCS, and its radiotap Flags say so.
Octets capture(const std::vector<Sample>& frames) {
    Octets file = from_hex("D4C3B2A1 0200 0400 00000000 00000000 FFFF0000 7F000000");
    std::uint32_t seconds = 1741942800;  // 2025-03-14T09:00:00Z
    std::uint32_t microseconds = 125000;
    bool has_fcs = false;
    for (const Sample& frame : frames) {
        // version, length, presence of Flags alone, Flags
        Octets record = from_hex(has_fcs ? "00 00 0900 02000000 10" : "00 00 0900 02000000 00");
        append(record, frame.octets);
        if (has_fcs) {
            append_little_endian_32(record, frame_check_sequence(frame.octets));
        }
        append_little_endian_32(file, seconds);
        append_little_endian_32(file, microseconds);
        append_little_endian_32(file, static_cast<std::uint32_t>(record.size()));
        append_little_endian_32(file, static_cast<std::uint32_t>(record.size()));
        append(file, record);
        seconds += 2;
        microseconds += 101007;
        has_fcs = !has_fcs;
    }
    return file;
}

/// The files by their path from the root of the repository: the sample capture with every station, and
/// where the fuzzers start from.
std::map<std::string, Octets> generated_files() {
    std::map<std::string, Octets> files;
    files["examples/stations.pcap"] = capture(stations());
    for (const Sample& sample : stations()) {
        files["fuzz/corpus/assoc_request/" + sample.name] =
            Octets(sample.octets.begin() + mac_header_length, sample.octets.end());
    }
    for (const Sample& sample : vectors("assoc_request_bodies")) {
        files["fuzz/corpus/assoc_request/" + sample.name] = sample.octets;
    }
    for (const Sample& sample : vectors("beacon_reports")) {
        files["fuzz/corpus/beacon_report/" + sample.name] = sample.octets;
    }
    std::vector<Sample> samples = elements();
    for (const char* file : {"malformed_elements", "fragmented_multi_link"}) {
        std::ranges::move(vectors(file), std::back_inserter(samples));
    }
    for (const Sample& sample : samples) {
        // Which class reads it, and with which maps, as fuzz_element takes it.
        const bool extended = sample.octets[0] == 255;
        Octets input{sample.octets[0], extended ? sample.octets[2] : std::uint8_t{0}, sample.maps};
        append(input, sample.octets);
        files["fuzz/corpus/element/" + sample.name] = input;
    }
    return files;
}

}  // namespace
}  // namespace nuv::test

int main(int argc, char** argv) {
    const bool check = argc == 3 && std::string_view(argv[2]) == "--check";
    if (argc != 2 && !check) {
        std::cerr << "usage: " << argv[0] << " ROOT_OF_THE_REPOSITORY [--check]\n";
        return 2;
    }
    bool failed = false;
    for (const auto& [name, octets] : nuv::test::generated_files()) {
        const std::filesystem::path path = std::filesystem::path(argv[1]) / name;
        const std::string content = nuv::test::to_string(octets);
        if (!check) {
            std::filesystem::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << content;
        }
        std::ifstream in(path, std::ios::binary);
        if (std::string(std::istreambuf_iterator<char>(in), {}) != content) {
            std::cerr << path << (check ? " is out of date\n" : " cannot be written\n");
            failed = true;
        }
    }
    return failed ? 1 : 0;
}

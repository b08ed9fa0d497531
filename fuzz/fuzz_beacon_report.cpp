// SPDX-License-Identifier: Apache-2.0
// The first octet is the max-consume-length with which the rest is read as a beacon report.
#include "fuzz/invariant.hpp"
#include "tests/support/codec_checks.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using nuv::ieee802_11::IEEE802_11_BeaconReport;
    if (size == 0) {
        return 0;
    }
    const nuv::test::Octets octets(data + 1, data + size);
    const nuv::test::Maker<IEEE802_11_BeaconReport> make = [data] {
        return std::make_unique<IEEE802_11_BeaconReport>(data[0]);
    };

    nuv::fuzz::require_well(nuv::test::check_ways_of_reading_agree(make, octets));
    const auto reading = nuv::test::read_from_memory(make(), octets);
    if (reading.ok()) {
        const auto written = nuv::test::write(*reading.object);
        nuv::fuzz::require(written.octets.size() == reading.object->get_length(), "other length");
        const auto again = nuv::test::read_from_memory(make(), written.octets);
        nuv::fuzz::require(again.ok() && *again.object == *reading.object, "not read as written");
    }
    return 0;
}

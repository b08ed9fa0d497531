// SPDX-License-Identifier: Apache-2.0
// The input is the body of an association request.
#include "fuzz/invariant.hpp"
#include "tests/support/codec_checks.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using nuv::test::Frame;
    using nuv::test::Octets;
    const Octets body(data, data + size);
    const nuv::test::Maker<Frame> make = [] { return std::make_unique<Frame>(); };

    nuv::fuzz::require_well(nuv::test::check_ways_of_reading_agree(make, body));
    const auto reading = nuv::test::read_from_memory(make(), body);
    if (reading.ok()) {
        nuv::fuzz::require_well(nuv::test::check_round_trip(*reading.object));
    }
    return 0;
}

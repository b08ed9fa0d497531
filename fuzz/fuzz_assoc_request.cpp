// SPDX-License-Identifier: Apache-2.0
// The input is the body of an association request.
#include "fuzz/codec_checks.hpp"
#include "fuzz/invariant.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace nuv::test;
    const Octets body(data, data + size);
    const auto make = [] { return std::make_unique<Frame>(); };

    nuv::fuzz::require_well(check_ways_of_reading_agree(make, body));
    const auto reading = read_from_memory(make(), body);
    if (reading.ok()) {
        nuv::fuzz::require_well(check_round_trip(*reading.object));
    }
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
// The first three octets say which element reads the rest: ID, extension, and which maps an EHT
// Capabilities element has. The element's own octets may say something else.
#include "fuzz/invariant.hpp"
#include "tests/support/codec_checks.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using nuv::test::ElementID;
    using nuv::test::ExtensionID;
    using nuv::test::Octets;
    constexpr std::size_t selector_length = 3;
    if (size < selector_length) {
        return 0;
    }
    const Octets octets(data + selector_length, data + size);
    const nuv::test::Maker<nuv::test::Element> make = [data] {
        return nuv::test::make_element(static_cast<ElementID>(data[0]),
                                       static_cast<ExtensionID>(data[1]), data[2]);
    };

    nuv::fuzz::require_well(nuv::test::check_ways_of_reading_agree(make, octets));
    const auto reading = nuv::test::read_from_memory(make(), octets);
    if (reading.ok()) {
        const bool whole = (reading.state & std::ios_base::failbit) == 0;
        // Fragments may follow a full one.
        const int end = 2 + octets[1];
        nuv::fuzz::require(
            !whole || reading.position == end || (octets[1] == 255 && reading.position > end),
            "not behind the element");
        nuv::fuzz::require_well(nuv::test::check_round_trip(make, *reading.object));
    }
    return 0;
}

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/hex.hpp"

/// The data in tests/vectors.
namespace nuv::test {

/// A sample out of a file of octets.
struct Sample {
    /// The file's name without its extension; behind "-" the sample's, where the file has several.
    std::string name;
    Octets octets;
    /// What the library writes after it has read them; where nothing else is said, the same.
    Octets written;
    /// With what text reading it fails; empty for what is read.
    std::string error;
    /// With what text it refuses to write.
    std::string refused;
    /// Its fields as a visitor is shown them, name=value with a blank between; empty where the
    /// sample does not say.
    std::string fields;
    /// What it prints; empty where the sample does not say.
    std::string text;
    /// How many octets at the end of an element belong to no field.
    std::size_t surplus = 0;
    /// Which maps an EHT Capabilities element has that do not follow from itself: bit 0 the one of
    /// 20 MHz only, bit 1 up to 80 MHz, bit 2 160 MHz.
    std::uint8_t maps = 0;
};

/// The samples of every .hex file whose name begins with `prefix`, by name: octets in hexadecimal,
/// `#` and what follows it is a comment. A line `[name]` begins a sample. `written:` goes before the
/// octets that the library writes where they differ; the other members of a sample are given as
/// `error: TEXT`, `refused: TEXT`, `fields: TEXT`, `text: TEXT`, `surplus: NUMBER`, `maps: OCTET`. Throws
/// std::runtime_error naming file and line for anything else.
std::vector<Sample> vectors(std::string_view prefix);

/// Association requests with their MAC header, by age of the station.
inline std::vector<Sample> stations() { return vectors("station_"); }
/// Elements of every class.
inline std::vector<Sample> elements() { return vectors("element_"); }
/// Octets before the body of a management frame.
constexpr std::size_t mac_header_length = 24;

/// What is expected of a call.
struct ListedCase {
    std::string call, expected;
};

/// The rows of a .tsv file: the call, a tab, what is expected; `#` begins a comment. In both, \n,
/// \t, \\ and \xHH stand for the byte. Throws std::runtime_error where there are none.
std::vector<ListedCase> listed_cases(const std::string& name);

}  // namespace nuv::test

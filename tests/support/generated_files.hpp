// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>

#include "tests/support/hex.hpp"

namespace nuv::test {

/// The files of the repository that are made of its vectors, by their path from its root: the
/// sample capture with every station, and where the fuzzers start from.
std::map<std::string, Octets> generated_files();

}  // namespace nuv::test

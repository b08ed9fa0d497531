// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "nuv/yajl_node.hpp"
#include "text/timestamp.hpp"

namespace nuvctl {

/// A frame made of JSON.
struct EncodedFrame {
    Timestamp time;
    std::vector<std::uint8_t> octets;  ///< MAC header and body
    std::size_t body = 0;              ///< where the body begins
    std::vector<std::string> notes;    ///< what it has not of the JSON, each behind its path
};

/// Makes the frame that write_json() describes so. Of what is there twice, only the elements are
/// read; members that write_json() does not know are refused. Throws FieldError.
EncodedFrame read_json(nuv::serialization::YAJLNode document);

}  // namespace nuvctl

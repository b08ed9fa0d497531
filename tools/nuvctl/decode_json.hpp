// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string_view>

#include "association_request.hpp"
#include "capture_file.hpp"
#include "link_layer.hpp"

namespace nuvctl {

/// Writes a request as one JSON object and a newline; indented if `pretty`. Throws
/// nuv::serialization::SerializationException when the stream fails.
void write_json(std::ostream& os, std::string_view file, const Record& record,
                const MacFrame& frame, const AssociationRequest& request, bool pretty);

}  // namespace nuvctl

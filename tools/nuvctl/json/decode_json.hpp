// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string_view>

#include "frames/action_frame.hpp"
#include "frames/association_request.hpp"
#include "frames/capture_file.hpp"
#include "frames/link_layer.hpp"

namespace nuvctl {

/// Where a frame comes from.
struct Source {
    std::string_view file;
    const Record& record;
    const MacFrame& mac;
};

/// Each writes a frame as one JSON object and a newline; indented if `pretty`. Throws OutputError
/// when the stream fails.
void write_json(std::ostream& os, const Source& source, const AssociationRequest& request,
                bool pretty);
void write_json(std::ostream& os, const Source& source, const ActionFrame& frame, bool pretty);

}  // namespace nuvctl

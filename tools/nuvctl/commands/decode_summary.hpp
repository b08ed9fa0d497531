// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "frames/action_frame.hpp"
#include "frames/association_request.hpp"

namespace nuvctl {

/// The table for people: one line a station, as its last request has it, then counts, also of the
/// action frames.
class Summary {
public:
    void add(const AssociationRequest& request);
    void add(const ActionFrame& frame);
    void print(std::ostream& os) const;

private:
    void print_stations(std::ostream& os) const;

    struct Station {
        std::size_t order;               ///< of its first request
        std::vector<std::string> cells;  ///< texts from outside are escaped
        std::size_t ssid_columns;
    };

    std::map<nuv::MACAddress, Station> stations_;
    std::uint64_t requests_ = 0;
    std::uint64_t errors_ = 0;
    std::map<std::string, std::size_t> actions_;
    std::uint64_t action_errors_ = 0;
};

}  // namespace nuvctl

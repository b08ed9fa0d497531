// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "association_request.hpp"

namespace nuvctl {

/// The table for people: one line a station, as its last request has it, then counts.
class Summary {
public:
    void add(const AssociationRequest& request);
    void print(std::ostream& os) const;

private:
    struct Station {
        std::size_t order;               ///< of its first request
        std::vector<std::string> cells;  ///< texts from outside are escaped
        std::size_t ssid_columns;
    };

    std::map<nuv::MACAddress, Station> stations_;
    std::uint64_t requests_ = 0;
    std::uint64_t errors_ = 0;
};

}  // namespace nuvctl

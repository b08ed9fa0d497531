// SPDX-License-Identifier: Apache-2.0
#include "commands/decode_summary.hpp"

#include <algorithm>
#include <array>
#include <ostream>
#include <sstream>

#include "frames/security.hpp"
#include "nuv/ieee802_11.hpp"
#include "text/text.hpp"

namespace nuvctl {

namespace {

using namespace nuv::ieee802_11;  // NOLINT(google-build-using-namespace): the elements by name
using ID = IEEE802_11_Element_ID;
using Ext = IEEE802_11_Element_ID_Extension;

constexpr std::size_t ssid_column = 1;
constexpr std::size_t security_column = 2;
constexpr std::size_t generations_column = 3;
constexpr std::array<std::string_view, 8> titles{"STATION", "SSID",   "SECURITY",    "GENERATIONS",
                                                 "STREAMS", "WIDTHS", "802.11k/v/r", "BANDS"};

std::string join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string text;
    for (const std::string& part : parts) {
        text += text.empty() ? "" : separator;
        text += part;
    }
    return text.empty() ? "-" : text;
}

/// What the rates of clause 15 and 16 (DSSS) and of clause 17 (OFDM) tell.
struct Rates {
    bool dsss = false;
    bool ofdm = false;
};

Rates rates(const AssociationRequest& request) {
    constexpr std::array<std::uint8_t, 4> dsss{2, 4, 11, 22};  // 1, 2, 5.5, 11 Mb/s
    constexpr std::uint8_t basic = 0x80;
    Rates result;
    const auto look = [&](std::span<const std::uint8_t> list) {
        for (const std::uint8_t rate : list) {
            const bool is_dsss = std::ranges::count(dsss, rate & ~basic) != 0;
            (is_dsss ? result.dsss : result.ofdm) = true;
        }
    };
    if (const auto* element = request.find<IEEE802_11_SupportedRatesBSSMembershipSelector>()) {
        look(element->get_supported_rates());
    }
    if (const auto* element =
            request.find<IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector>()) {
        look(element->get_extended_supported_rates());
    }
    return result;
}

std::string generations(const AssociationRequest& request) {
    std::vector<std::string> names;
    const Rates legacy = rates(request);
    if (legacy.dsss || legacy.ofdm) {
        names.emplace_back(!legacy.ofdm ? "b" : legacy.dsss ? "b/g" : "a/g");
    }
    const auto add = [&](bool there, const char* name) {
        if (there) {
            names.emplace_back(name);
        }
    };
    add(request.has(ID::HT_CAPABILITIES), "n");
    add(request.has(ID::VHT_CAPABILITIES), "ac");
    add(request.has(Ext::HE_CAPABILITIES), "ax");
    add(request.has(Ext::EHT_CAPABILITIES), "be");
    return join(names, " ");
}

/// Greatest number of streams in a map of two bits for each of eight, 3 for none (VHT and HE).
unsigned streams_of_map(std::uint64_t map) {
    unsigned streams = 0;
    for (unsigned n = 0; n < 8; ++n) {
        if ((map >> (2 * n) & 3U) != 3U) {
            streams = n + 1;
        }
    }
    return streams;
}

unsigned streams(const AssociationRequest& request) {
    unsigned most = 1;
    if (const auto* ht = request.find<IEEE802_11_HTCapabilities>()) {
        for (std::size_t n = 0; n < 4; ++n) {  // eight MCS for each number of streams
            if (((ht->get_mcs_bits() >> (8 * n)) & std::bitset<128>(0xFF)).any()) {
                most = std::max(most, static_cast<unsigned>(n + 1));
            }
        }
    }
    if (const auto* vht = request.find<IEEE802_11_VHTCapabilities>()) {
        most = std::max(most, streams_of_map(vht->get_supported_bits().to_ullong()));
    }
    if (const auto* he = request.find<IEEE802_11_HECapabilities>()) {
        most = std::max(most, streams_of_map(he->get_rx_mcs_leq_80_mhz().to_ullong()));
    }
    if (const auto* eht = request.find<IEEE802_11_EHTCapabilities>()) {
        for (const auto& map : {eht->get_less_or_equal_80_mhz_mcs_nss_map(),
                                eht->get_160_mhz_mcs_nss_map(), eht->get_320_mhz_mcs_nss_map()}) {
            most = std::max<unsigned>(most, map.get_rx_max_nss(0));
        }
        // The streams received with the lowest EHT-MCS.
        most = std::max(most, eht->get_20_mhz_only_non_ap_sta_mcs_nss_map_standard() & 0xFU);
    }
    return most;
}

std::string widths(const AssociationRequest& request) {
    bool has_40 = false;
    bool has_80 = false;
    bool has_160 = false;
    bool has_80_80 = false;
    bool has_320 = false;
    if (const auto* ht = request.find<IEEE802_11_HTCapabilities>()) {
        has_40 = ht->get_info_bits()[1];
    }
    if (const auto* vht = request.find<IEEE802_11_VHTCapabilities>()) {
        const bool set_160 = vht->get_info_bits()[2];
        const bool set_80_80 = vht->get_info_bits()[3];
        has_40 = has_80 = true;
        has_160 = set_160 || set_80_80;
        has_80_80 = set_80_80;
    }
    if (const auto* he = request.find<IEEE802_11_HECapabilities>()) {
        const auto& phy = he->get_phy_info_bits();
        has_40 = has_40 || phy[1] || phy[2];
        has_80 = has_80 || phy[2];
        has_160 = has_160 || phy[3];
        has_80_80 = has_80_80 || phy[4];
    }
    if (const auto* eht = request.find<IEEE802_11_EHTCapabilities>()) {
        has_320 = eht->get_phy_info_bits()[1];
    }
    std::vector<std::string> names{"20"};
    for (const auto& [there, name] : {std::pair{has_40, "40"},
                                      {has_80, "80"},
                                      {has_160, "160"},
                                      {has_80_80, "80+80"},
                                      {has_320, "320"}}) {
        if (there) {
            names.emplace_back(name);
        }
    }
    return join(names, "/");
}

/// Radio measurement, BSS transition, fast transition.
std::string amendments(const AssociationRequest& request) {
    constexpr std::size_t bss_transition = 19;
    const auto* extended = request.find<IEEE802_11_ExtendendCapabilities>();
    std::vector<std::string> names;
    if (request.has(ID::RM_ENABLED_CAPABILITIES)) {
        names.emplace_back("k");
    }
    if (extended != nullptr && extended->get_capabilities()[bss_transition]) {
        names.emplace_back("v");
    }
    if (request.has(ID::MOBILITY_DOMAIN)) {
        names.emplace_back("r");
    }
    return join(names, " ");
}

/// As far as channels, operating classes and band-bound elements tell.
std::string bands(const AssociationRequest& request) {
    bool has_2_4 = rates(request).dsss;
    bool has_5 = request.has(ID::VHT_CAPABILITIES);
    bool has_6 = request.has(Ext::HE_6_GHZ_BAND_CAPABILITIES);
    if (const auto* channels = request.find<IEEE802_11_SupportedChannels>()) {
        for (const auto& range : channels->get_channels_vector()) {
            (range.first_channel <= 14 ? has_2_4 : has_5) = true;
        }
    }
    if (const auto* classes = request.find<IEEE802_11_SupportedOperatingClasses>()) {
        const auto look = [&](std::span<const std::uint8_t> list) {
            for (const unsigned opclass : list) {
                has_2_4 = has_2_4 || (opclass >= 81 && opclass <= 84);
                has_5 = has_5 || (opclass >= 115 && opclass <= 130);
                has_6 = has_6 || (opclass >= 131 && opclass <= 137);
            }
        };
        look(std::array{classes->get_current_opclass()});
        look(classes->get_capable_opclasses());
        look(classes->get_extension_vector());
    }
    std::vector<std::string> names;
    for (const auto& [there, name] : {std::pair{has_2_4, "2.4"}, {has_5, "5"}, {has_6, "6"}}) {
        if (there) {
            names.emplace_back(name);
        }
    }
    return join(names, " ");
}

void print_row(std::ostream& os, std::span<const std::string> cells,
               std::span<const std::size_t> columns_used, std::span<const std::size_t> widths) {
    for (std::size_t k = 0; k < cells.size(); ++k) {
        os << cells[k];
        if (k + 1 < cells.size()) {
            os << std::string(widths[k] - columns_used[k] + 2, ' ');
        }
    }
    os << '\n';
}

using Counts = std::map<std::string, std::size_t>;

/// In how many cells of a column each word stands.
template <class Stations>
Counts words_in(const Stations& stations, std::size_t column) {
    Counts counts;
    for (const auto& [address, station] : stations) {
        std::istringstream words(station.cells[column]);
        for (std::string word; words >> word;) {
            ++counts[word];
        }
    }
    return counts;
}

/// "security: NONE 1, WPA2PSK 2"
void print_counts(std::ostream& os, const char* title, const Counts& counts) {
    const char* separator = ": ";
    os << title;
    for (const auto& [word, number] : counts) {
        os << separator << word << ' ' << number;
        separator = ", ";
    }
}

void print_errors(std::ostream& os, std::uint64_t errors) {
    if (errors != 0) {
        os << ", " << errors << " with errors (see the JSON)";
    }
    os << '\n';
}

std::string count(std::uint64_t number, const std::string& singular, const std::string& plural) {
    return std::to_string(number) + " " + (number == 1 ? singular : plural);
}

}  // namespace

void Summary::add(const AssociationRequest& request) {
    ++requests_;
    errors_ += request.error ? 1U : 0U;
    const Printable ssid = to_printable(as_text(request.ssid));
    const auto [station, added] =
        stations_.try_emplace(request.station, Station{stations_.size(), {}, 0});
    station->second.ssid_columns = ssid.text.empty() ? 1 : ssid.columns;
    station->second.cells = {request.station.to_string(),
                             ssid.text.empty() ? "-" : ssid.text,
                             security_text(request),
                             generations(request),
                             std::to_string(streams(request)),
                             widths(request),
                             amendments(request),
                             bands(request)};
}

void Summary::add(const ActionFrame& frame) {
    ++actions_[std::string(frame.type)];
    action_errors_ += frame.error ? 1U : 0U;
}

void Summary::print(std::ostream& os) const {
    if (requests_ != 0) {
        print_stations(os);
    }
    if (!actions_.empty()) {
        print_counts(os, "action frames", actions_);
        print_errors(os, action_errors_);
    }
}

void Summary::print_stations(std::ostream& os) const {
    std::vector<const Station*> order(stations_.size());
    for (const auto& [address, station] : stations_) {
        order[station.order] = &station;
    }
    const auto columns_of = [](const Station& station) {
        std::vector<std::size_t> columns;
        for (const std::string& cell : station.cells) {
            columns.push_back(cell.size());
        }
        columns[ssid_column] = station.ssid_columns;
        return columns;
    };
    Station head{0, {titles.begin(), titles.end()}, titles[ssid_column].size()};
    order.insert(order.begin(), &head);
    std::vector<std::size_t> column_widths(titles.size());
    for (const Station* station : order) {
        const auto columns = columns_of(*station);
        std::ranges::transform(columns, column_widths, column_widths.begin(),
                               [](std::size_t a, std::size_t b) { return std::max(a, b); });
    }
    for (const Station* station : order) {
        print_row(os, station->cells, columns_of(*station), column_widths);
    }
    os << '\n'
       << count(requests_, "request", "requests") << " of "
       << count(stations_.size(), "station", "stations");
    print_errors(os, errors_);
    print_counts(os, "generations", words_in(stations_, generations_column));
    os << '\n';
    print_counts(os, "security", words_in(stations_, security_column));
    os << '\n';
}

}  // namespace nuvctl

// SPDX-License-Identifier: Apache-2.0
#include "commands/decode_summary.hpp"

#include <algorithm>
#include <array>
#include <bitset>
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
constexpr std::array<std::string_view, 10> titles{"STATION", "SSID",   "SECURITY",    "GENERATIONS",
                                                  "STREAMS", "WIDTHS", "802.11k/v/r", "BANDS",
                                                  "LINKS",   "MLD"};

std::string join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string text;
    for (const std::string& part : parts) {
        text += text.empty() ? "" : separator;
        text += part;
    }
    return text.empty() ? "-" : text;
}

/// The names of the bits that are set.
template <std::size_t N>
std::string join(const std::bitset<N>& bits, const std::array<std::string_view, N>& names,
                 std::string_view separator) {
    std::vector<std::string> parts;
    for (std::size_t n = 0; n < N; ++n) {
        if (bits[n]) {
            parts.emplace_back(names[n]);
        }
    }
    return join(parts, separator);
}

/// What the rates of clause 15 and 16 (DSSS) and of clause 17 (OFDM) tell.
struct Rates {
    bool dsss = false;
    bool ofdm = false;
};

Rates rates(const AssociationRequest& link) {
    constexpr std::array<std::uint8_t, 4> dsss{2, 4, 11, 22};  // 1, 2, 5.5, 11 Mb/s
    constexpr std::uint8_t basic = 0x80;
    Rates result;
    const auto look = [&](std::span<const std::uint8_t> list) {
        for (const std::uint8_t rate : list) {
            const bool is_dsss = std::ranges::count(dsss, rate & ~basic) != 0;
            (is_dsss ? result.dsss : result.ofdm) = true;
        }
    };
    if (const auto* element = link.find<IEEE802_11_SupportedRatesBSSMembershipSelector>()) {
        look(element->get_supported_rates());
    }
    if (const auto* element = link.find<IEEE802_11_ExtendedSupportedRatesBSSMembershipSelector>()) {
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

unsigned streams(const AssociationRequest& link) {
    unsigned most = 1;
    if (const auto* ht = link.find<IEEE802_11_HTCapabilities>()) {
        for (std::size_t n = 0; n < 4; ++n) {  // eight MCS for each number of streams
            if (((ht->get_mcs_bits() >> (8 * n)) & std::bitset<128>(0xFF)).any()) {
                most = std::max(most, static_cast<unsigned>(n + 1));
            }
        }
    }
    if (const auto* vht = link.find<IEEE802_11_VHTCapabilities>()) {
        most = std::max(most, streams_of_map(vht->get_supported_bits().to_ullong()));
    }
    if (const auto* he = link.find<IEEE802_11_HECapabilities>()) {
        most = std::max(most, streams_of_map(he->get_rx_mcs_leq_80_mhz().to_ullong()));
    }
    if (const auto* eht = link.find<IEEE802_11_EHTCapabilities>()) {
        for (const auto& map : {eht->get_less_or_equal_80_mhz_mcs_nss_map(),
                                eht->get_160_mhz_mcs_nss_map(), eht->get_320_mhz_mcs_nss_map()}) {
            most = std::max<unsigned>(most, map.get_rx_max_nss(0));
        }
        // The streams received with the lowest EHT-MCS.
        most = std::max(most, eht->get_20_mhz_only_non_ap_sta_mcs_nss_map_standard() & 0xFU);
    }
    return most;
}

constexpr std::array<std::string_view, 6> width_names{"20", "40", "80", "160", "80+80", "320"};
using Widths = std::bitset<width_names.size()>;

Widths widths(const AssociationRequest& link) {
    constexpr std::size_t w20 = 0;
    constexpr std::size_t w40 = 1;
    constexpr std::size_t w80 = 2;
    constexpr std::size_t w160 = 3;
    constexpr std::size_t w80_80 = 4;
    constexpr std::size_t w320 = 5;
    Widths result;
    result.set(w20);
    if (const auto* ht = link.find<IEEE802_11_HTCapabilities>()) {
        result[w40] = ht->get_info_bits()[1];
    }
    if (const auto* vht = link.find<IEEE802_11_VHTCapabilities>()) {
        const bool set_160 = vht->get_info_bits()[2];
        const bool set_80_80 = vht->get_info_bits()[3];
        result[w40] = result[w80] = true;
        result[w160] = set_160 || set_80_80;
        result[w80_80] = set_80_80;
    }
    if (const auto* he = link.find<IEEE802_11_HECapabilities>()) {
        const auto& phy = he->get_phy_info_bits();
        result[w40] = result[w40] || phy[1] || phy[2];
        result[w80] = result[w80] || phy[2];
        result[w160] = result[w160] || phy[3];
        result[w80_80] = result[w80_80] || phy[4];
    }
    if (const auto* eht = link.find<IEEE802_11_EHTCapabilities>()) {
        result[w320] = eht->get_phy_info_bits()[1];
    }
    return result;
}

/// Radio measurement, BSS transition, fast transition.
constexpr std::array<std::string_view, 3> amendment_names{"k", "v", "r"};
using Amendments = std::bitset<amendment_names.size()>;

Amendments amendments(const AssociationRequest& link) {
    constexpr std::size_t bss_transition = 19;
    const auto* extended = link.find<IEEE802_11_ExtendendCapabilities>();
    Amendments result;
    result[0] = link.has(ID::RM_ENABLED_CAPABILITIES);
    result[1] = extended != nullptr && extended->get_capabilities()[bss_transition];
    result[2] = link.has(ID::MOBILITY_DOMAIN);
    return result;
}

constexpr std::array<std::string_view, 3> band_names{"2.4", "5", "6"};
using Bands = std::bitset<band_names.size()>;

/// As far as channels, operating classes and band-bound elements tell.
Bands bands(const AssociationRequest& link) {
    Bands result;
    result[0] = rates(link).dsss;
    result[1] = link.has(ID::VHT_CAPABILITIES);
    result[2] = link.has(Ext::HE_6_GHZ_BAND_CAPABILITIES);
    if (const auto* channels = link.find<IEEE802_11_SupportedChannels>()) {
        for (const auto& range : channels->get_channels_vector()) {
            result.set(range.first_channel <= 14 ? 0 : 1);
        }
    }
    if (const auto* classes = link.find<IEEE802_11_SupportedOperatingClasses>()) {
        const auto look = [&](std::span<const std::uint8_t> list) {
            for (const unsigned opclass : list) {
                result[0] = result[0] || (opclass >= 81 && opclass <= 84);
                result[1] = result[1] || (opclass >= 115 && opclass <= 130);
                result[2] = result[2] || (opclass >= 131 && opclass <= 137);
            }
        };
        look(std::array{classes->get_current_opclass()});
        look(classes->get_capable_opclasses());
        look(classes->get_extension_vector());
    }
    return result;
}

/// What a station can do on any of its links.
class Abilities {
public:
    explicit Abilities(const AssociationRequest& request) {
        add(request);
        const auto* multi_link = request.find<IEEE802_11_MultiLink>();
        if (multi_link == nullptr || !multi_link->is_basic()) {
            return;
        }
        mld = multi_link->get_mld_mac_address().to_string();
        const IEEE802_11_ElementSequence& link_info = multi_link->get_link_info();
        for (std::size_t k = 0; k < link_info.size(); ++k) {
            const auto* profile = dynamic_cast<const IEEE802_11_PerSTAProfile*>(&link_info[k]);
            if (profile != nullptr) {
                ElementMaker maker(ElementMaker::Frame::REQUEST);
                if (const auto* inherited = request.find<IEEE802_11_HECapabilities>()) {
                    maker.remember(*inherited);
                }
                AssociationRequest link;
                link.elements = read_elements(profile->get_elements().octets(), 0, maker);
                add(link);
            }
        }
    }

    unsigned streams = 0;
    Widths widths;
    Amendments amendments;
    Bands bands;
    unsigned links = 0;
    std::string mld = "-";

private:
    void add(const AssociationRequest& link) {
        streams = std::max(streams, nuvctl::streams(link));
        widths |= nuvctl::widths(link);
        amendments |= nuvctl::amendments(link);
        bands |= nuvctl::bands(link);
        ++links;
    }
};

std::string text_of(const Security& security) {
    const std::string mode = enum_to_string(security.mode);
    return security.detail.empty() ? mode : mode + " (" + std::string(security.detail) + ")";
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

/// In how many cells of a column each word stands; `end` is behind each word of a cell.
template <class Stations>
Counts words_in(const Stations& stations, std::size_t column, char end) {
    Counts counts;
    for (const auto& [address, station] : stations) {
        std::istringstream words(station.cells[column]);
        for (std::string word; std::getline(words, word, end);) {
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
    const Abilities abilities(request);
    const auto [station, added] =
        stations_.try_emplace(request.station, Station{stations_.size(), {}, 0});
    station->second.ssid_columns = ssid.text.empty() ? 1 : ssid.columns;
    station->second.cells = {request.station.to_string(),
                             ssid.text.empty() ? "-" : ssid.text,
                             text_of(security_of(request)),
                             generations(request),
                             std::to_string(abilities.streams),
                             join(abilities.widths, width_names, "/"),
                             join(abilities.amendments, amendment_names, " "),
                             join(abilities.bands, band_names, " "),
                             std::to_string(abilities.links),
                             abilities.mld};
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
    print_counts(os, "generations", words_in(stations_, generations_column, ' '));
    os << '\n';
    print_counts(os, "security", words_in(stations_, security_column, '\n'));
    os << '\n';
}

}  // namespace nuvctl

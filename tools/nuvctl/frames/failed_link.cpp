// SPDX-License-Identifier: Apache-2.0
#include "frames/failed_link.hpp"

#include <vector>

#include "nuv/ieee802_11/ieee802_11_per_sta_profile.hpp"
#include "nuv/serialization_exception.hpp"

namespace nuvctl {

namespace {

using nuv::ieee802_11::IEEE802_11_Element_Base;
using nuv::ieee802_11::IEEE802_11_Element_ID;
using nuv::ieee802_11::IEEE802_11_MultiLink;
using nuv::ieee802_11::IEEE802_11_PerSTAProfile;

constexpr std::size_t header = 2;
constexpr std::size_t max_length = 255;

/// Octets of an element, and the offset of each of them in the frame.
struct Content {
    std::vector<std::uint8_t> octets;
    std::vector<std::size_t> offsets;

    /// What stands behind the header at `at`, and in the fragments behind; empty if it is not all there.
    Content content_at(std::size_t at, std::uint8_t fragment_id) const {
        Content content;
        std::size_t length = max_length;
        for (bool first = true; length == max_length; first = false) {
            if (!first && (at == octets.size() || octets[at] != fragment_id)) {
                break;
            }
            if (octets.size() - at < header || octets.size() - at - header < octets[at + 1]) {
                return {};
            }
            length = octets[at + 1];
            for (std::size_t end = (at += header) + length; at < end; ++at) {
                content.octets.push_back(octets[at]);
                content.offsets.push_back(offsets[at]);
            }
        }
        return content;
    }
};

bool reads(IEEE802_11_Element_Base& element, std::span<const std::uint8_t> octets) {
    nuv::serialization::SerializationContext context;
    try {
        element.deserialize(octets, context);
        return true;
    } catch (const nuv::serialization::SerializationException&) {
        return false;
    }
}

/// The element at which a profile that has read its capability information failed.
std::optional<FailedLink::Element> failed_element(const IEEE802_11_PerSTAProfile& profile,
                                                  const Content& content) {
    constexpr std::size_t sta_info = 2;
    constexpr std::size_t capability_information = 2;
    if (!profile.get_capability_information()) {
        return std::nullopt;
    }
    const std::size_t at = sta_info + content.octets[sta_info] + capability_information +
                           profile.get_elements().octets().size();
    FailedLink::Element element{content.octets[at], {}, content.offsets[at]};
    const bool extended = static_cast<IEEE802_11_Element_ID>(element.id) ==
                          IEEE802_11_Element_ID::ELEMENT_ID_EXTENSION;
    if (extended && at + header < content.octets.size()) {
        element.extension = content.octets[at + header];
    }
    return element;
}

}  // namespace

std::optional<FailedLink> failed_link(const IEEE802_11_MultiLink& element,
                                      std::span<const std::uint8_t> octets) {
    constexpr std::uint8_t element_fragment = 242;
    constexpr std::uint8_t subelement_fragment = 254;
    constexpr std::size_t common_info = 3;  // behind extension and control
    constexpr std::uint8_t link_id_mask = 0x0F;
    Content frame{{octets.begin(), octets.end()}, {}};
    for (std::size_t offset = 0; offset < octets.size(); ++offset) {
        frame.offsets.push_back(offset);
    }
    const Content whole = frame.content_at(0, element_fragment);
    if (whole.octets.size() <= common_info) {
        return std::nullopt;
    }
    const std::size_t link_info = common_info + whole.octets[common_info];
    if (link_info > max_length || link_info >= whole.octets.size()) {
        return std::nullopt;
    }
    // The element without its links must be good.
    std::vector<std::uint8_t> without_links{octets[0], static_cast<std::uint8_t>(link_info)};
    without_links.insert(without_links.end(), whole.octets.begin(),
                         whole.octets.begin() + static_cast<std::ptrdiff_t>(link_info));
    IEEE802_11_MultiLink common;
    if (!reads(common, without_links) || !common.is_basic()) {
        return std::nullopt;
    }
    const std::size_t at = link_info + element.get_link_info().octets().size();
    if (at + header >= whole.octets.size() ||
        static_cast<IEEE802_11_Element_ID>(whole.octets[at]) !=
            IEEE802_11_PerSTAProfile::ELEMENT_ID) {
        return std::nullopt;
    }
    FailedLink link{
        static_cast<std::uint8_t>(whole.octets[at + header] & link_id_mask), whole.offsets[at], {}};
    const Content content = whole.content_at(at, subelement_fragment);
    if (content.octets.empty()) {
        return link;
    }
    IEEE802_11_PerSTAProfile profile;
    if (const auto& maps = element.inherited_eht_maps()) {
        profile.inherit_eht_maps(*maps);
    }
    if (reads(profile, std::span(whole.octets).subspan(at))) {
        return std::nullopt;
    }
    link.element = failed_element(profile, content);
    return link;
}

}  // namespace nuvctl

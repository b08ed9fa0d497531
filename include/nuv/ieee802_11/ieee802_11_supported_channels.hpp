// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "nuv/ieee802_11/ieee802_11_element.hpp"
#include "nuv/small_vector.hpp"

namespace nuv::ieee802_11 {

/// Supported Channels (ID 36; IEEE Std 802.11-2020, 9.4.2.17): ranges of channels.
///
/// A body over 255 octets is refused on writing with "Invalid size", an odd Length on reading with
/// "Invalid length".
class NUV_EXPORT IEEE802_11_SupportedChannels
    : public IEEE802_11_LayoutElement<IEEE802_11_SupportedChannels,
                                      IEEE802_11_Element_ID::SUPPORTED_CHANNELS> {
public:
    struct Range {
        std::uint8_t first_channel;
        std::uint8_t number_of_channels;

        bool operator==(const Range&) const = default;
    };
    using Ranges = SmallVector<Range, 16>;

    void add_supported_channel(std::uint8_t first_channel, std::uint8_t number_of_channels) {
        channels_.push_back({first_channel, number_of_channels});
    }
    const Ranges& get_channels_vector() const { return channels_; }

private:
    friend IEEE802_11_LayoutElement;
    struct Layout;

    Ranges channels_;
};

}  // namespace nuv::ieee802_11

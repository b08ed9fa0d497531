// SPDX-License-Identifier: Apache-2.0
#include "nuv/ieee802_11/ieee802_11_supported_channels.hpp"

#include "internal/ieee802_11/layout_element.hpp"

namespace nuv::impl {

template <>
struct WireForm<ieee802_11::IEEE802_11_SupportedChannels::Range> {
    using Range = ieee802_11::IEEE802_11_SupportedChannels::Range;
    static constexpr std::size_t size = 2;
    static constexpr CodecTexts texts = octet_texts;
    static constexpr bool is_group = true;

    static void encode(const Range& range, std::uint8_t* octets) {
        octets[0] = range.first_channel;
        octets[1] = range.number_of_channels;
    }
    static void decode(const std::uint8_t* octets, std::size_t count, Range& range) {
        if (count == size) {
            range = {octets[0], octets[1]};
        }
    }
};

}  // namespace nuv::impl

namespace nuv::ieee802_11 {

/// | offset | size         | field                                      | clause   |
/// |--------|--------------|--------------------------------------------|----------|
/// | 2      | 2 per range  | first channel number, number of channels   | 9.4.2.17 |
struct IEEE802_11_SupportedChannels::Layout {
    using E = IEEE802_11_SupportedChannels;
    using fields = layout::Fields<layout::Rest<"channels", &E::channels_>>;

    static void check_length(std::uint8_t length) {
        if (length % 2 != 0) {
            throw serialization::SerializationException("Invalid length");
        }
    }
    static void check_fields(const E& e) {
        if (fields::length(e) > 255) {
            throw serialization::SerializationException("Invalid size");
        }
    }
};

template class IEEE802_11_LayoutElement<IEEE802_11_SupportedChannels,
                                        IEEE802_11_Element_ID::SUPPORTED_CHANNELS>;

}  // namespace nuv::ieee802_11

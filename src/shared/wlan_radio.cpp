// SPDX-License-Identifier: Apache-2.0
#include "nuv/wlan_radio.hpp"

#include <cstddef>
#include <ostream>

#include "internal/classic_stream.hpp"

namespace nuv {

namespace {

/// Whether `theirs` has streams that `ours` lacks.
bool adds_streams(const NSSTable& ours, const NSSTable& theirs) {
    return ours.intersect(theirs) != theirs;
}

/// The texts of the bits that are set, lowest first.
template <class Bit, std::size_t N>
std::string names_of(const std::bitset<N>& bits) {
    std::string text;
    for (std::size_t bit = 0; bit < N; ++bit) {
        if (bits[bit]) {
            text.append(text.empty() ? "" : ", ").append(enum_to_string(static_cast<Bit>(bit)));
        }
    }
    return text;
}

}  // namespace

WLANRadio::WLANRadio(RadioID radio_id) : radio_id_(radio_id) {}

WLANRadio::WLANRadio(RadioID radio_id, const NSSTable& rx_nss_table, const NSSTable& tx_nss_table,
                     WLANPhymodeBits supported_phymodes, MLOModeBits mlo_modes,
                     ChannelList channel_list)
    : radio_id_(radio_id),
      rx_nss_table_(rx_nss_table),
      tx_nss_table_(tx_nss_table),
      supported_phymodes_(supported_phymodes),
      mlo_modes_(mlo_modes),
      channel_list_(std::move(channel_list)) {}

bool WLANRadio::shares_channel_with(const WLANRadio& other) const {
    return channel_list_.has_common_channel_with(other.channel_list_);
}

void WLANRadio::update(const WLANRadio& other) {
    radio_id_.update(other.radio_id_);
    rx_nss_table_ = rx_nss_table_.merge(other.rx_nss_table_);
    tx_nss_table_ = tx_nss_table_.merge(other.tx_nss_table_);
    supported_phymodes_ |= other.supported_phymodes_;
    mlo_modes_ |= other.mlo_modes_;
    channel_list_.update(other.channel_list_);
}

bool WLANRadio::can_update_from(const WLANRadio& other) const {
    return radio_id_.can_update_from(other.radio_id_) ||
           adds_streams(rx_nss_table_, other.rx_nss_table_) ||
           adds_streams(tx_nss_table_, other.tx_nss_table_) ||
           (other.supported_phymodes_ & ~supported_phymodes_).any() ||
           (other.mlo_modes_ & ~mlo_modes_).any() ||
           channel_list_.can_update_from(other.channel_list_);
}

bool WLANRadio::equivalent_to(const WLANRadio& other) const {
    return radio_id_.equivalent_to(other.radio_id_) && rx_nss_table_ == other.rx_nss_table_ &&
           tx_nss_table_ == other.tx_nss_table_ &&
           supported_phymodes_ == other.supported_phymodes_ && mlo_modes_ == other.mlo_modes_ &&
           channel_list_.equivalent_to(other.channel_list_);
}

std::string WLANRadio::to_string() const {
    return std::string("radio id: ")
        .append(radio_id_.is_set() ? radio_id_.get().to_string() : "---")
        .append(", rx streams: [")
        .append(rx_nss_table_.to_string())
        .append("], tx streams: [")
        .append(tx_nss_table_.to_string())
        .append("], PHY modes: [")
        .append(names_of<WLANPhymode>(supported_phymodes_))
        .append("], MLO modes: [")
        .append(names_of<MLOMode>(mlo_modes_))
        .append("]\n")
        .append(channel_list_.to_string());
}

std::ostream& operator<<(std::ostream& os, const WLANRadio& radio) {
    return impl::write_text(os, radio.to_string());
}

}  // namespace nuv

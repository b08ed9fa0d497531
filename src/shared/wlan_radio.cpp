// SPDX-License-Identifier: Apache-2.0
#include "nuv/wlan_radio.hpp"

namespace nuv {

namespace {

/// Whether `theirs` has streams that `ours` lacks.
bool adds_streams(const NSSTable& ours, const NSSTable& theirs) {
    return ours.intersect(theirs) != theirs;
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

}  // namespace nuv

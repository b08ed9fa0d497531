// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string>
#include <utility>

#include "nuv/channel_list.hpp"
#include "nuv/dynamic_value.hpp"
#include "nuv/export.hpp"
#include "nuv/mac_address.hpp"
#include "nuv/nss_table.hpp"
#include "nuv/wlan_types.hpp"

namespace nuv {

/// A radio: what it is able to do, and its channels.
class NUV_EXPORT WLANRadio {
public:
    using RadioID = DynamicValue<MACAddress, SetOnceStrategy>;

    explicit WLANRadio(RadioID radio_id);
    WLANRadio(RadioID radio_id, const NSSTable& rx_nss_table, const NSSTable& tx_nss_table,
              WLANPhymodeBits supported_phymodes, MLOModeBits mlo_modes, ChannelList channel_list);

    /// Once set never replaced.
    const RadioID& get_radio_id() const noexcept { return radio_id_; }
    const NSSTable& get_rx_nss_table() const noexcept { return rx_nss_table_; }
    const NSSTable& get_tx_nss_table() const noexcept { return tx_nss_table_; }
    const WLANPhymodeBits& get_supported_phymodes() const noexcept { return supported_phymodes_; }
    const MLOModeBits& get_mlo_modes() const noexcept { return mlo_modes_; }
    const ChannelList& get_channel_list() const noexcept { return channel_list_; }

    void set_rx_nss_table(const NSSTable& table) { rx_nss_table_ = table; }
    void set_tx_nss_table(const NSSTable& table) { tx_nss_table_ = table; }
    void set_supported_phymodes(const WLANPhymodeBits& modes) { supported_phymodes_ = modes; }
    void set_mlo_modes(const MLOModeBits& modes) { mlo_modes_ = modes; }
    void set_channel_list(ChannelList list) { channel_list_ = std::move(list); }

    bool shares_channel_with(const WLANRadio& other) const;

    /// Adds what `other` can do more, and updates the channels.
    void update(const WLANRadio& other);
    /// Whether update() would change anything.
    bool can_update_from(const WLANRadio& other) const;
    /// Equal but for the time stamps.
    bool equivalent_to(const WLANRadio& other) const;
    /// Time stamps included, the channel list's update type not.
    bool operator==(const WLANRadio& other) const = default;
    /// By the radio's identifier alone.
    bool operator<(const WLANRadio& other) const { return radio_id_.get() < other.radio_id_.get(); }

    /// "radio id: 02:00:00:00:00:01, rx streams: [20 MHz: 2], tx streams: [], PHY modes: [n, ac],
    /// MLO modes: [STR]" and, in lines of their own, the channels; an identifier that was never set
    /// is "---".
    std::string to_string() const;

private:
    RadioID radio_id_;
    NSSTable rx_nss_table_;
    NSSTable tx_nss_table_;
    WLANPhymodeBits supported_phymodes_;
    MLOModeBits mlo_modes_;
    ChannelList channel_list_;
};

/// Writes the text form. The stream's width, fill and flags neither matter nor change.
NUV_EXPORT std::ostream& operator<<(std::ostream& os, const WLANRadio& radio);

}  // namespace nuv

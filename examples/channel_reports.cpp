// SPDX-License-Identifier: Apache-2.0
// Merges what two sources report of a radio's channels, and finds the operating class of one.
#include <iostream>

#include "nuv/channel_info.hpp"
#include "nuv/channel_list.hpp"
#include "nuv/frequency_conversion.hpp"
#include "nuv/operating_class_deduction.hpp"

using nuv::ChannelEntry;
using nuv::ChannelInfo;
using nuv::ChannelList;
using nuv::ChannelWidth;
using nuv::KiloHertz;
using nuv::steady_now_ns;
using nuv::OperatingClassDeduction::Region;

int main() {
    const auto capable = channel_width_capability_bits(ChannelWidth::HT80);
    ChannelList channels({{36, KiloHertz{5180000}, capable, {}, {}, {}, {}, {}},
                          {40, KiloHertz{5200000}, capable, {}, {}, {}, {}, {}}});
    ChannelEntry busy = channels.get_channels().front();
    busy.set_channel_utilization({80, steady_now_ns()});
    const ChannelList report({busy}, ChannelList::UpdateType::PARTIAL);
    if (channels.can_update_from(report)) {
        channels.update(report);
    }
    std::cout << channels;

    const std::int64_t now = steady_now_ns();
    const ChannelInfo operating({KiloHertz{5180000}, now},
                                {{KiloHertz{5210000}, ChannelWidth::HT80, {}}, now}, {}, {20, now});
    for (const auto opclass :
         nuv::OperatingClassDeduction::get_opclasses_from_channel_info(operating, Region::GLOBAL)) {
        std::cout << "operating class " << int{opclass} << '\n';
    }
}

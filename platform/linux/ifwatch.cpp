// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/ifwatch.h"

#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace {

/// Whether interfaces of this type have an address of 48 bits.
bool has_mac_address(unsigned type) {
    switch (type) {
        case ARPHRD_ETHER:
        case ARPHRD_LOOPBACK:
        case ARPHRD_IEEE80211:  // monitor interfaces, by what stands before their frames
        case ARPHRD_IEEE80211_PRISM:
        case ARPHRD_IEEE80211_RADIOTAP:
            return true;
        default:
            return false;
    }
}

}  // namespace

extern "C" int if_get_hwaddr(const char* ifname, uint8_t out[6]) {
    const std::size_t length = std::strlen(ifname);
    ifreq request{};
    if (length == 0 || length >= sizeof request.ifr_name) {
        return -1;
    }
    std::memcpy(request.ifr_name, ifname, length);

    const int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0) {
        return -1;
    }
    const int result = ::ioctl(fd, SIOCGIFHWADDR, &request);
    ::close(fd);
    if (result < 0 || !has_mac_address(request.ifr_hwaddr.sa_family)) {
        return -1;
    }
    std::memcpy(out, request.ifr_hwaddr.sa_data, 6);
    return 0;
}

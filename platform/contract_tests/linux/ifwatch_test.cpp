// SPDX-License-Identifier: Apache-2.0
#include "nuv_platform/ifwatch.h"

#include <gtest/gtest.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cstdarg>
#include <cstring>

namespace {

constexpr std::array<std::uint8_t, 6> address{0x02, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E};
int type = -1;  // of every interface; -1: the kernel answers

}  // namespace

// No machine has an interface of each type.
extern "C" [[gnu::visibility("default")]] int ioctl(int fd, unsigned long request, ...) noexcept {
    va_list arguments;
    va_start(arguments, request);
    auto* const answer = va_arg(arguments, ifreq*);
    va_end(arguments);
    if (type < 0 || request != SIOCGIFHWADDR) {
        return static_cast<int>(::syscall(SYS_ioctl, fd, request, answer));
    }
    answer->ifr_hwaddr.sa_family = static_cast<sa_family_t>(type);
    std::memcpy(answer->ifr_hwaddr.sa_data, address.data(), address.size());
    return 0;
}

TEST(Ifwatch, AddressesOf48BitsAreThoseOfEthernetAndMonitorInterfaces) {
    // 801 to 803: monitor interfaces with the frame alone, a Prism or a radiotap header before it.
    for (type = 0; type < 1000; ++type) {
        const bool known =
            type == ARPHRD_ETHER || type == ARPHRD_LOOPBACK || (type >= 801 && type <= 803);
        std::array<std::uint8_t, 6> read{};
        EXPECT_EQ(if_get_hwaddr("if0", read.data()) == 0, known) << type;
        EXPECT_EQ(read == address, known) << type;
    }
    type = -1;
}

/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_IFWATCH_H
#define NUV_PLATFORM_IFWATCH_H

#include <stdint.h>

#include "nuv_platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * Reads the hardware address of the network interface `ifname` into `out`, in transmission order.
 *
 * `ifname` is NUL-terminated, not NULL, at most 15 characters. Any thread; does not block.
 * Interfaces with a 48-bit address are Ethernet, loopback and 802.11 monitor interfaces.
 *
 * | result | meaning                                                              |
 * |--------|----------------------------------------------------------------------|
 * | 0      | `out` holds the address                                              |
 * | < 0    | no such interface, name too long, or no 48-bit address; `out` is as before |
 */
NUV_PLATFORM_EXPORT int if_get_hwaddr(const char* ifname, uint8_t out[6]);

#ifdef __cplusplus
}
#endif

#endif

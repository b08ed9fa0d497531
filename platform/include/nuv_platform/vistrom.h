/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_VISTROM_H
#define NUV_PLATFORM_VISTROM_H

#include "nuv_platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * The value of `key` in the boot environment of the device, NUL-terminated, valid until the next
 * call; NULL when there is none. On Linux that is the file named by NUV_BOOT_ENV (lines `key=value`)
 * when that is set, else the boot loader's environment when /etc/fw_env.config exists and the platform
 * was built with libubootenv, else the environment of the process. The last of several lines for a key
 * counts; what cannot be read has no keys, and a line in the log says so. One thread at a time.
 */
NUV_PLATFORM_EXPORT const char* vistrom_getenv(const char* key);

#ifdef __cplusplus
}
#endif

#endif

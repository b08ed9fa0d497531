/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_SLAB_H
#define NUV_PLATFORM_SLAB_H

#include "nuv_platform/export.h"

#ifdef __cplusplus
extern "C" {
#endif

/** Gives free memory of the allocator back to the system when there is enough of it to matter. Cheap
 *  enough to be called each second. Does not fail. */
NUV_PLATFORM_EXPORT void slab_reap(void);

#ifdef __cplusplus
}
#endif

#endif

/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_EXPORT_H
#define NUV_PLATFORM_EXPORT_H

/** Marks a function of the platform contract: visible from the library that implements it. */
#define NUV_PLATFORM_EXPORT __attribute__((visibility("default")))

#endif

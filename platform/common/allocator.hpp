// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <malloc.h>

// malloc_trim(), malloc_info() and mallinfo2() are there. Other C libraries have none of them.
#ifdef __GLIBC__
#if __GLIBC_PREREQ(2, 33)
#define NUV_ALLOCATOR_STATISTICS
#endif
#endif

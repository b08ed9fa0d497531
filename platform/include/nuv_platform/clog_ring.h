/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_CLOG_RING_H
#define NUV_PLATFORM_CLOG_RING_H

#include <stdint.h>

/**
 * @file
 * The form of a ring made by clogger_add_shringbuf(). The ring `name` is the POSIX shared memory
 * object CLOGGER_RING_PREFIX + name (on Linux a file of that name in /dev/shm), readable by its
 * owner: this header, then `size` bytes of text. Integers are in the byte order of the machine.
 *
 * The text is a sequence of lines, each ended by a newline. The byte at position p of that
 * sequence, counted from the first one ever written, lies at p % size.
 *
 * To read a ring that may be written meanwhile: load `written` (acquire), copy the text, issue an
 * acquire fence, load `begun`. The positions from `begun - size` (0 when begun < size) up to
 * `written` are good; unless they start at 0, the first line of them may lack its beginning. After
 * a process died while it wrote, one line may be damaged.
 */

#define CLOGGER_RING_PREFIX "/nuvlog."
#define CLOGGER_RING_MAGIC "NUVRING1"

typedef struct clogger_ring {
    char magic[8]; /**< CLOGGER_RING_MAGIC without the NUL */
    uint32_t size; /**< bytes of text behind this header */
    uint32_t reserved;
    uint64_t begun;   /**< bytes whose writing has begun since the ring was made */
    uint64_t written; /**< bytes written */
} clogger_ring;

#endif

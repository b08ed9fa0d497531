/* SPDX-License-Identifier: Apache-2.0 */
#ifndef NUV_PLATFORM_CLOG_H
#define NUV_PLATFORM_CLOG_H

#include <stddef.h>
#include <stdint.h>

#include "nuv_platform/export.h"

/**
 * @file
 * The logger: named loggers, which own outputs, and named modules, which own a level.
 *
 * A record is written through a module, or straight to a logger. It reaches an output when
 *  1. the level of the module lets it pass; for a record written straight to the logger that is the
 *     level of the logger's main module, and `CLOGGER_INFO` as long as it has none,
 *  2. the output's mask has the bit of its level, and
 *  3. every message filter of the logger lets it pass. Filters are asked only about records that
 *     some output takes.
 *
 * The logger "default" exists from the start and is the default logger. It begins with one output:
 * stderr, all levels. Every module begins at `CLOGGER_INFO`. So a process that configures nothing
 * logs to stderr at level info. Loggers made by clogger_alloc() begin without an output.
 *
 * Handles stay valid until the process ends; there is no way to give one back. Functions that take
 * a handle accept NULL: the ones that return an int answer `-EINVAL`, the others do nothing.
 *
 * Every function may be called from any thread and blocks no longer than the outputs do. None may be
 * called in a signal handler: the code that it interrupted may hold the lock of a logger. Callbacks
 * (functions, filters, time functions) run before the log call returns, on the thread that logs,
 * one at a time for each logger; once a removal has returned, the callback removed neither runs nor
 * will run again. A callback must not throw. What it logs itself is dropped, and a change of
 * outputs, filters or the time function that it asks for is refused.
 *
 * fork() waits for the records and the changes of outputs that other threads have under way. The
 * child may call everything from then on, also when the parent has other threads. It has all
 * outputs of the parent except ring buffers, which stay the parent's alone; a daemon adds them after
 * its last fork. Only daemon_start() (daemon.h) hands them over to its child. Both processes write to
 * the same files: a file with a limit is set aside by whoever fills it, so only one of them should go
 * on writing to it. A callback may fork, too: fork() does not wait then, and until its child calls
 * exec() or _exit(), which it has to do before the callback returns, the child's records are dropped
 * and its changes refused.
 *
 * No call ends the process for want of a resource: what cannot be written is dropped. Writing a
 * record to a broken pipe raises no SIGPIPE that the process could notice.
 *
 * A platform may omit the functions marked "Optional"; each says what the library does without it.
 * All others are required.
 *
 * Result of every function that returns an int, unless it says otherwise:
 *
 * | result     | meaning                                                                    |
 * |------------|----------------------------------------------------------------------------|
 * | 0          | done                                                                       |
 * | `-EINVAL`  | a NULL handle; to add: a NULL callback, name or path, or one out of range  |
 * | `-EEXIST`  | an output or filter with this key is there already; it stays as it is      |
 * | `-ENOENT`  | nothing with this key to remove                                            |
 * | `-EDEADLK` | called by a callback of a logger                                           |
 * | < 0 else   | the negated errno of what failed; nothing has changed                      |
 */

#ifdef __cplusplus
extern "C" {
#endif

/* Two underscores mark the functions that write a record. */
/* NOLINTBEGIN(bugprone-reserved-identifier) */
#define CLOG_PRINTF(fmt_index, first) __attribute__((format(printf, fmt_index, first)))

typedef struct clogger clogger;
typedef struct clogmod clogmod;

/** Levels, most severe first. A module of level L lets the levels 0 to L pass, below 0 none. */
enum clogger_level {
    CLOGGER_ERROR = 0,
    CLOGGER_WARN = 1,
    CLOGGER_INFO = 2,
    CLOGGER_DEBUG = 3,
    CLOGGER_TRACE = 4
};

/**
 * The first 16-bit argument of the calls that add an output, `mask`: bit L is set when records of
 * level L go to the output (error 1, warn 2, info 4, debug 8, trace 16). Other bits are ignored.
 *
 * The second, `fields`: what precedes the text in a line of the output, in the order of this list,
 * each followed by a blank and the last by ": ". 0 stands for the output's own choice:
 * `CLOGGER_FIELD_TIME | CLOGGER_FIELD_LEVEL | CLOGGER_FIELD_MODULE` for stderr, stdout, files and
 * ring buffers, `CLOGGER_FIELD_MODULE` for syslog, `CLOGGER_FIELD_NONE` for callbacks. A field that
 * is empty for a record is left out.
 *
 * All outputs except callbacks show control octets of the text (0 to 31 and 127) as `\x1b`, so that a
 * text from outside forges no line and commands no terminal. A newline that begins the text stays:
 * the pieces of a record that was cut begin with one.
 */
enum clogger_field {
    CLOGGER_FIELD_TIME = 1, /**< UTC, "2015-11-03T12:34:56.123Z", or what the time function wrote */
    CLOGGER_FIELD_LEVEL = 2, /**< "ERROR", "WARN", "INFO", "DEBUG" or "TRACE" */
    CLOGGER_FIELD_MODULE =
        4, /**< the module's name; the logger's when it was logged straight to it */
    CLOGGER_FIELD_SOURCE = 8,   /**< "src/shared/mainloop:120 run" */
    CLOGGER_FIELD_NONE = 0x8000 /**< the text alone; for use without the others */
};

/** A record, as filters and callbacks see it. Valid until the callback returns; no pointer is NULL.
 */
typedef struct clogger_msg_info {
    int64_t time_us;      /**< microseconds since 1970-01-01 00:00 UTC */
    const char* logger;   /**< name of the logger */
    const char* module;   /**< name of the module, "" for a record written straight to the logger */
    const char* file;     /**< as given, "" when NULL was given */
    const char* function; /**< as given, "" when NULL was given */
    const char* text;     /**< the formatted text, without fields */
    int line;             /**< as given */
    int level;            /**< enum clogger_level */
    int debug_arg;        /**< as given to clogger__debug(), otherwise 0 */
} clogger_msg_info;

/** What becomes of a log file that has reached its size. */
typedef struct clogger_backup_style {
    /** Number of older files that are kept: log.txt is renamed to log.1.txt, log.1.txt to log.2.txt
     * and so on. 0: none, the file starts afresh. */
    uint16_t files;
    /** Non-zero: a file that has content when the output is added is set aside in the same way. */
    uint16_t rotate_on_open;
} clogger_backup_style;

/** Takes one line: the fields asked for and the text. */
typedef void (*clogger_function)(void* ctx, const char* line);
/** The same, with the record it was made from. */
typedef void (*clogger_ext_function)(void* ctx, const clogger_msg_info* info, const char* line);
/** Returns non-zero to let the record pass, 0 to drop it. */
typedef int (*clogger_msg_filter)(void* ctx, const clogger_msg_info* info);
/** Writes the time field into `buf` like snprintf: at most `size` bytes with the NUL; returns the
 *  length, negative on failure (the field is left out). */
typedef int (*clogger_snprintf_time)(char* buf, size_t size);
/** Prints like printf; a negative result ends the output. */
typedef int (*clogger_printer)(void* ctx, const char* fmt, ...) CLOG_PRINTF(2, 3);

/* -- loggers -- */

/** The logger `name`, or NULL when there is none; the default logger when `name` is NULL. */
NUV_PLATFORM_EXPORT clogger* clogger_get(const char* name);
/** The logger `name`, made when there is none. NULL without memory or with an empty or NULL name.
 */
NUV_PLATFORM_EXPORT clogger* clogger_alloc(const char* name);
/** Never NULL on a platform that can log at all. Optional: clogger_get(NULL) stands in. */
NUV_PLATFORM_EXPORT clogger* clogger_get_default_logger(void);
/** Modules that are bound to no logger write to the default one from the next record on. Optional:
 * without it the default logger stays. */
NUV_PLATFORM_EXPORT int clogger_set_default_logger(clogger* logger);
/** The name, valid until the process ends; NULL for NULL. Optional: without it the library cuts no
 * record into chunks. */
NUV_PLATFORM_EXPORT const char* clogger_get_name(const clogger* logger);

/** Write one record straight to a logger. `file` and `function` may be NULL. */
NUV_PLATFORM_EXPORT void clogger__err(clogger* logger, const char* file, const char* function,
                                      int line, const char* fmt, ...) CLOG_PRINTF(5, 6);
NUV_PLATFORM_EXPORT void clogger__warn(clogger* logger, const char* file, const char* function,
                                       int line, const char* fmt, ...) CLOG_PRINTF(5, 6);
NUV_PLATFORM_EXPORT void clogger__info(clogger* logger, const char* file, const char* function,
                                       int line, const char* fmt, ...) CLOG_PRINTF(5, 6);
/** `debug_arg` is a number of the caller's own that callbacks find in the record. */
NUV_PLATFORM_EXPORT void clogger__debug(clogger* logger, const char* file, const char* function,
                                        int line, int debug_arg, const char* fmt, ...)
    CLOG_PRINTF(6, 7);

/* -- outputs of a logger; mask and fields as told at enum clogger_field -- */

/** The three standard outputs, at most one of each for a logger. Enabling one that is enabled gives
 *  it the new mask and fields. Lines go straight to the file descriptors 2 and 1. A program that
 *  also prints through stdio flushes it first to keep the order. */
NUV_PLATFORM_EXPORT int clogger_enable_stderr(clogger* logger, uint16_t mask, uint16_t fields);
NUV_PLATFORM_EXPORT int clogger_enable_stdout(clogger* logger, uint16_t mask, uint16_t fields);
/** Facility daemon, the program's name as identification; trace records go in as debug. */
NUV_PLATFORM_EXPORT int clogger_enable_syslog(clogger* logger, uint16_t mask, uint16_t fields);
NUV_PLATFORM_EXPORT int clogger_disable_stderr(clogger* logger);
NUV_PLATFORM_EXPORT int clogger_disable_stdout(clogger* logger);
NUV_PLATFORM_EXPORT int clogger_disable_syslog(clogger* logger);

/**
 * Adds a ring of the newest lines in memory that outlives the process; its key is `name`. The
 * ring's form is told in clog_ring.h.
 *
 * `name` is 1 to 200 characters without '/'; `size` is the number of bytes of text it holds, 1024
 * to 2^30. A ring of this name and size that an earlier process left is continued, one of another
 * size is replaced. A ring belongs to one logger of one process at a time, a second one gets
 * `-EBUSY`.
 */
NUV_PLATFORM_EXPORT int clogger_add_shringbuf(clogger* logger, const char* name, uint32_t size,
                                              uint16_t mask, uint16_t fields);
/** Removes the output and the ring with its content. */
NUV_PLATFORM_EXPORT int clogger_rm_shringbuf(clogger* logger, const char* name);

/**
 * Appends to the file `path`, which is also its key; it is made when missing, its folder is not. A
 * line is in the file when the log call returns. `size` is the number of bytes a file may reach, 0
 * for no limit. `style` is copied; NULL stands for one older file.
 */
NUV_PLATFORM_EXPORT int clogger_add_file(clogger* logger, const char* path, uint32_t size,
                                         const clogger_backup_style* style, uint16_t mask,
                                         uint16_t fields);
/** Closes the file and leaves it where it is. */
NUV_PLATFORM_EXPORT int clogger_rm_file(clogger* logger, const char* path);

/** Adds a callback; its key is the pair of `function` and `ctx`. Lines end with a newline when
 *  `newline` is non-zero. */
NUV_PLATFORM_EXPORT int clogger_add_function(clogger* logger, clogger_function function, void* ctx,
                                             int newline, uint16_t mask, uint16_t fields);
NUV_PLATFORM_EXPORT int clogger_rm_function(clogger* logger, clogger_function function, void* ctx);
NUV_PLATFORM_EXPORT int clogger_add_ext_function(clogger* logger, clogger_ext_function function,
                                                 void* ctx, int newline, uint16_t mask,
                                                 uint16_t fields);
NUV_PLATFORM_EXPORT int clogger_rm_ext_function(clogger* logger, clogger_ext_function function,
                                                void* ctx);

/** Adds a filter; its key is the pair of `filter` and `ctx`. Filters run in the order added, up to
 * the first that drops the record. */
NUV_PLATFORM_EXPORT int clogger_add_msg_filter(clogger* logger, clogger_msg_filter filter,
                                               void* ctx);
NUV_PLATFORM_EXPORT int clogger_rm_msg_filter(clogger* logger, clogger_msg_filter filter,
                                              void* ctx);

/** Replaces the form of the time field for all outputs of the logger; NULL goes back to the
 * built-in one. Optional: without it the form stays. */
NUV_PLATFORM_EXPORT int clogger_set_snprintf_time_func(clogger* logger,
                                                       clogger_snprintf_time function);

/** Prints the logger's name, outputs, filters and modules for people, line by line; the printer may
 *  use the logger. Returns 0, or the negative result of the printer. Optional: without it nothing is
 *  printed. */
NUV_PLATFORM_EXPORT int clogger_show(clogger* logger, clogger_printer printer, void* ctx);

/* -- modules -- */

/** The module `name`, made when there is none. NULL without memory or with an empty or NULL name. A
 *  module writes to whatever is the default logger until it is bound. */
NUV_PLATFORM_EXPORT clogmod* clogmod_get_or_alloc(const char* name);
/** The same, bound to `logger` from now on and its main module. NULL when `logger` is NULL. Optional:
 *  without it no logger gets a main module. */
NUV_PLATFORM_EXPORT clogmod* clogmod_get_or_alloc_main(clogger* logger, const char* name);
/** The logger that the module writes to at the moment. Optional: without it the library cuts no
 *  record of a module into chunks. */
NUV_PLATFORM_EXPORT clogger* clogmod_get_clogger(clogmod* module);
/** Any number is kept as given. Optional: without it the level stays. */
NUV_PLATFORM_EXPORT void clogmod_set_loglevel(clogmod* module, int level);
/** The module's level, -1 for NULL. Costs no more than a load: callers ask it before they build a
 *  record. Optional: without it the library builds every record and reports CLOGGER_TRACE. */
NUV_PLATFORM_EXPORT int clogmod_get_loglevel(clogmod* module);

/** Write one record through a module. `file` and `function` may be NULL. */
NUV_PLATFORM_EXPORT void clogmod__err(clogmod* module, const char* file, const char* function,
                                      int line, const char* fmt, ...) CLOG_PRINTF(5, 6);
NUV_PLATFORM_EXPORT void clogmod__warn(clogmod* module, const char* file, const char* function,
                                       int line, const char* fmt, ...) CLOG_PRINTF(5, 6);
NUV_PLATFORM_EXPORT void clogmod__info(clogmod* module, const char* file, const char* function,
                                       int line, const char* fmt, ...) CLOG_PRINTF(5, 6);
NUV_PLATFORM_EXPORT void clogmod__debug(clogmod* module, const char* file, const char* function,
                                        int line, const char* fmt, ...) CLOG_PRINTF(5, 6);
NUV_PLATFORM_EXPORT void clogmod__trace(clogmod* module, const char* file, const char* function,
                                        int line, const char* fmt, ...) CLOG_PRINTF(5, 6);

/* NOLINTEND(bugprone-reserved-identifier) */

#ifdef __cplusplus
}
#endif

#endif

// The debug library: switches of daemons and kernel modules, debug log, crash records.

#ifndef PLATFORM_DEBUG_LIBRARY_H
#define PLATFORM_DEBUG_LIBRARY_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

enum { kDebugAppCount = 5, kDebugKernelModuleCount = 4 };

typedef struct dbg_submodule {
    int32_t id;
    char name[32];
    char help[128];
} dbg_submodule;
static_assert(sizeof(dbg_submodule) == 164, "");

typedef struct dbg_module {
    int32_t count;
    dbg_submodule* submodules;
} dbg_module;

typedef struct udbg_header_t {
    uint16_t reserved[8];
    uint16_t output_mode; ///< 0: console, 1: buffer
} udbg_header_t;
static_assert(offsetof(udbg_header_t, output_mode) == 16, "");

#ifdef __cplusplus
extern "C" {
#endif

extern dbg_module app_debug[kDebugAppCount];
extern dbg_module kmod_debug[kDebugKernelModuleCount];

/// 64-bit switch masks by application id and by kernel module id; valid after the attach calls.
extern uint64_t* udbg_info;
extern uint64_t* kdbg_info;
extern udbg_header_t* udbg_header;

// Called once at start, in this order. The shell goes on whatever they return; masks that are null then stay untouched.
int conf_init(void);
int attach_udebug(void);
int attach_kdebug(void);

// User-space applications. Ids are positions of app_debug, those of submodules are bits of the mask. Names that are
// returned belong to the library and stay; null stands for an id that is none. Everything called "print" writes to
// standard output.

/// -1: unknown.
int appname2id(const char* name);
const char* appid2name(int id);

/// -1: unknown, of the application or of the submodule.
int submod_name2id(int app, const char* name);

/// Names, states and helps of the submodules; the names of all applications.
void print_submod_names(int app);
void print_submod_all_app(void);

/// Turns on and off all switches of all applications.
void dbg_all(void);
void clear_dbg_all(void);

/// Prints and clears the log. The results are those of `debug show` and `debug log-clear`; 0 is success.
int print_udebug(void);
int clear_udebug_logs(void);

// Kernel modules, the same for kmod_debug. Results of the log's calls are not looked at.

/// 0: unknown, or the first module.
int kmodname2id(const char* name);
const char* kmodid2name(int id);

/// -1: unknown.
int subkmod_name2id(int kmod, const char* name);
void print_subkmod_names(int kmod);
void print_subkmod_all_kmod(void);
void clear_kdbg_all(void);
int print_kdebug(void);
int clear_kdebug_log(void);

/// Debug state of the pseudo-terminal; called with (1, 0). The result is not looked at.
int set_pts_debug_stats(int state, int reserved);

/// Text of crash record `index`, from 0, terminated within `size` bytes; its line feed is part of it unless it is cut.
/// Negative: no such record, which ends a listing. A listing begins and ends with read_crash_reset().
int read_crash(int index, char* buffer, int size);
void read_crash_reset(void);

/// Forgets all records. The result is not looked at.
int clear_crash(void);

#ifdef __cplusplus
}
#endif

#endif

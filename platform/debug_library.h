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

// Called once at start, in this order. The shell ignores the results. It does not use masks that are null afterwards.
int conf_init(void);
int attach_udebug(void);
int attach_kdebug(void);

// User-space applications. The id of an application is its position in app_debug; the id of a submodule is its bit in
// the mask. Returned names belong to the library and stay valid; null if there is no such id. The functions "print_..."
// write to the standard output.

/// -1: unknown.
int appname2id(const char* name);
const char* appid2name(int id);

/// -1: the application or the submodule is unknown.
int submod_name2id(int app, const char* name);

/// The first function prints the names, states and help texts of an application's submodules. The second one prints the
/// names of all applications.
void print_submod_names(int app);
void print_submod_all_app(void);

/// dbg_all() turns all switches of all applications on, clear_dbg_all() turns them off.
void dbg_all(void);
void clear_dbg_all(void);

/// Print and clear the log. Their results are the results of `debug show` and `debug log-clear`; 0 is success.
int print_udebug(void);
int clear_udebug_logs(void);

// The same for the kernel modules of kmod_debug. The results of the log's functions are not examined.

/// 0: the module is unknown, or is the first one.
int kmodname2id(const char* name);
const char* kmodid2name(int id);

/// -1: unknown.
int subkmod_name2id(int kmod, const char* name);
void print_subkmod_names(int kmod);
void print_subkmod_all_kmod(void);
void clear_kdbg_all(void);
int print_kdebug(void);
int clear_kdebug_log(void);

/// Sets the debug state of the pseudo-terminal; called with (1, 0). The result is not examined.
int set_pts_debug_stats(int state, int reserved);

/// Writes the text of crash record `index`, counted from 0, to `buffer`, terminated within `size` bytes. The text ends
/// with a line feed unless it is truncated. Returns a negative number if there is no such record. The shell calls
/// read_crash_reset() before and after it reads the records.
int read_crash(int index, char* buffer, int size);
void read_crash_reset(void);

/// Deletes all records. The result is not examined.
int clear_crash(void);

#ifdef __cplusplus
}
#endif

#endif

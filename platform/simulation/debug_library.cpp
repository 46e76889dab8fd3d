#include "platform/debug_library.h"
#include "platform/simulation/debug_state.h"

dbg_module app_debug[kDebugAppCount];
dbg_module kmod_debug[kDebugKernelModuleCount];
uint64_t* udbg_info;
uint64_t* kdbg_info;
udbg_header_t* udbg_header;

int conf_init()
{
    return 0;
}

int attach_udebug()
{
    return 0;
}

int attach_kdebug()
{
    return 0;
}

int appname2id(const char*)
{
    return 0;
}

const char* appid2name(int)
{
    return nullptr;
}

int submod_name2id(int, const char*)
{
    return 0;
}

void print_submod_names(int) {}

void print_submod_all_app() {}

void dbg_all() {}

void clear_dbg_all() {}

int print_udebug()
{
    return 0;
}

int clear_udebug_logs()
{
    return 0;
}

int kmodname2id(const char*)
{
    return 0;
}

const char* kmodid2name(int)
{
    return nullptr;
}

int subkmod_name2id(int, const char*)
{
    return 0;
}

void print_subkmod_names(int) {}

void print_subkmod_all_kmod() {}

void clear_kdbg_all() {}

int print_kdebug()
{
    return 0;
}

int clear_kdebug_log()
{
    return 0;
}

int set_pts_debug_stats(int, int)
{
    return 0;
}

int read_crash(int, char*, int)
{
    return 0;
}

void read_crash_reset() {}

int clear_crash()
{
    return 0;
}

void simDebugLog(int, int, const char*) {}

void simRecordCrash(const char*) {}

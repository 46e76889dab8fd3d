// The smallest set of functions that a vendor must define. Most return constants. Each query to the daemon fails.

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform/debug_library.h"
#include "platform/message_channel.h"
#include "platform/system_library.h"
#include "platform/wireless_library.h"

namespace
{

dbg_submodule submodules[] = {{0, "discovery", "AC discovery"}, {1, "join", "Join"}};
uint64_t userMasks[kDebugAppCount];
uint64_t kernelMasks[kDebugKernelModuleCount];
udbg_header_t header;

} // namespace

dbg_module app_debug[kDebugAppCount] = {{2, submodules}};
dbg_module kmod_debug[kDebugKernelModuleCount] = {{2, submodules}};
uint64_t* udbg_info = userMasks;
uint64_t* kdbg_info = kernelMasks;
udbg_header_t* udbg_header = &header;

// System library

void install_signal_handler(const char*, int) {}
int qln_app_init_with_instd(int, int)
{
    return 0;
}
int act_confirm(const char* message)
{
    std::fputs(message, stdout);
    return 0;
}
int sys_factory_reset(int)
{
    return 0;
}
int read_sn(char* buffer, int size, int)
{
    return std::snprintf(buffer, static_cast<std::size_t>(size), "STUB0001");
}
int valid_hostname(const char* name)
{
    constexpr std::size_t kLongest = 36;
    if (std::strlen(name) > kLongest)
        return -2;
    const std::size_t legal = std::strspn(name, "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-_");
    return legal > 0 && name[legal] == '\0' ? 0 : -1;
}
int get_full_version_string(char* buffer, int size, const char* model_prefix, int major, int minor, const char* build)
{
    return std::snprintf(buffer, static_cast<std::size_t>(size), "%s-v%d.%02d-build%s", model_prefix, major, minor,
                         build);
}
int osbios_CheckCRC(int, int, int)
{
    return 0;
}
int osbios_SetCrc(int, const void*)
{
    return 0;
}
int get_qln_platform_info(void*)
{
    return 0;
}
int sys_intf_status(const char*)
{
    return 0;
}
int get_cpu_usage_rate(void)
{
    return 1;
}
int get_memory_usage_rate(void)
{
    return 2;
}
int uptime_main(char* buffer, int size)
{
    return std::snprintf(buffer, static_cast<std::size_t>(size), "up 3 days");
}
int sys_get_gpio_status(int, int* value)
{
    *value = 0;
    return 0;
}
int sys_set_gpio_status(int, int)
{
    return 0;
}
int sys_get_reset_key_status(void)
{
    return 1;
}
int sys_set_led_action(int, int)
{
    return 0;
}
int sys_set_led_sys_test(void)
{
    return 0;
}

// Message channel

void* ipcmsg_alloc(int size)
{
    return std::malloc(static_cast<std::size_t>(size));
}
void ipcmsg_free(void* buffer)
{
    std::free(buffer);
}
int ipcmsg_send_and_recv(int, int, int, const void*, int, void*, int*, int)
{
    return -1;
}
int ipcmsg_send(int, int, int, const void*, int)
{
    return -1;
}

// Debug library

int conf_init(void)
{
    return 0;
}
int attach_udebug(void)
{
    return 0;
}
int attach_kdebug(void)
{
    return 0;
}
int appname2id(const char*)
{
    return -1;
}
const char* appid2name(int id)
{
    constexpr const char* kNames[kDebugAppCount] = {"app0", "app1", "app2", "app3", "app4"};
    return id >= 0 && id < kDebugAppCount ? kNames[id] : nullptr;
}
int submod_name2id(int, const char*)
{
    return -1;
}
void print_submod_names(int) {}
void print_submod_all_app(void) {}
void dbg_all(void) {}
void clear_dbg_all(void) {}
int print_udebug(void)
{
    return 0;
}
int clear_udebug_logs(void)
{
    return 0;
}
int kmodname2id(const char*)
{
    return 0;
}
const char* kmodid2name(int id)
{
    constexpr const char* kNames[kDebugKernelModuleCount] = {"kmod0", "kmod1", "kmod2", "kmod3"};
    return id >= 0 && id < kDebugKernelModuleCount ? kNames[id] : nullptr;
}
int subkmod_name2id(int, const char*)
{
    return -1;
}
void print_subkmod_names(int) {}
void print_subkmod_all_kmod(void) {}
void clear_kdbg_all(void) {}
int print_kdebug(void)
{
    return 0;
}
int clear_kdebug_log(void)
{
    return 0;
}
int set_pts_debug_stats(int, int)
{
    return 0;
}
int read_crash(int, char*, int)
{
    return -1;
}
void read_crash_reset(void) {}
int clear_crash(void)
{
    return 0;
}

// Wireless libraries

int init_wlan_api(wlan_api*)
{
    return 0;
}
int rtl_wlan_get_bgscan(const char*, int, void*, int)
{
    return 0;
}
int kstr_regdmn_get_country_code(const char*)
{
    return 0;
}
const char* kstr_regdmn_get_default_country(const char*)
{
    return nullptr;
}

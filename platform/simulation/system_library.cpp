#include "platform/system_library.h"

void install_signal_handler(const char*, int) {}

int qln_app_init_with_instd(int, int)
{
    return 0;
}

int act_confirm(const char*)
{
    return 0;
}

int sys_factory_reset(int)
{
    return 0;
}

int read_sn(char*, int, int)
{
    return 0;
}

int valid_hostname(const char*)
{
    return 0;
}

int get_full_version_string(char*, int, const char*, int, int, const char*)
{
    return 0;
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

int get_cpu_usage_rate()
{
    return 0;
}

int get_memory_usage_rate()
{
    return 0;
}

int uptime_main(char*, int)
{
    return 0;
}

int sys_get_gpio_status(int, int*)
{
    return 0;
}

int sys_set_gpio_status(int, int)
{
    return 0;
}

int sys_get_reset_key_status()
{
    return 0;
}

int sys_set_led_action(int, int)
{
    return 0;
}

int sys_set_led_sys_test()
{
    return 0;
}

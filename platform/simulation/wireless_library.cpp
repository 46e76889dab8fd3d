#include "platform/wireless_library.h"

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

// The wireless libraries: the driver's operation table, background scan, regulatory domains.

#ifndef PLATFORM_WIRELESS_LIBRARY_H
#define PLATFORM_WIRELESS_LIBRARY_H

#include <assert.h>
#include <stddef.h>

typedef void (*wlan_reserved)(void);

/// The operations of the driver, in a fixed order. The shell does not use the reserved ones.
typedef struct wlan_api {
    wlan_reserved reserved0[4];
    int (*get_coexist)(const char* interface); ///< non-zero: enabled
    wlan_reserved reserved5[1];
    int (*get_radio_mode)(const char* interface, char* buffer); ///< 0: done; the buffer holds 256 bytes
    wlan_reserved reserved7[8];
    int (*get_channel)(const char* interface);
    wlan_reserved reserved16[3];
    int (*get_beacon_interval)(const char* interface);
    wlan_reserved reserved20[3];
    int (*get_dtim_period)(const char* interface);
    wlan_reserved reserved24[1];
    int (*get_rts_threshold)(const char* interface);
    wlan_reserved reserved26[1];
    int (*get_frag_threshold)(const char* interface);
    wlan_reserved reserved28[15];
    const char* (*get_ssid)(const char* interface, char* buffer, int size); ///< the text, or null
    wlan_reserved reserved44[1];
    int (*get_broadcast_ssid)(const char* interface); ///< non-zero: enabled
    wlan_reserved reserved46[1];
    int (*set_country)(const char* interface, int code);
    int (*get_country)(const char* interface, char* buffer, int size); ///< 0: done
    wlan_reserved reserved49[38];
    int (*get_local_bridging)(const char* interface); ///< non-zero: local bridge
    wlan_reserved reserved88[5];
    int (*get_auth_type)(const char* interface);
} wlan_api;

static_assert(offsetof(wlan_api, get_coexist) == 4 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_radio_mode) == 6 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_channel) == 15 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_beacon_interval) == 19 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_dtim_period) == 23 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_rts_threshold) == 25 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_frag_threshold) == 27 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_ssid) == 43 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_broadcast_ssid) == 45 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, set_country) == 47 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_country) == 48 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_local_bridging) == 87 * sizeof(wlan_reserved), "");
static_assert(offsetof(wlan_api, get_auth_type) == 93 * sizeof(wlan_reserved), "");
static_assert(sizeof(wlan_api) == 94 * sizeof(wlan_reserved), "");

#ifdef __cplusplus
extern "C" {
#endif

/// Fills the operation table.
int init_wlan_api(wlan_api* table);

/// Scans in the background on `interface` and writes the result to `buffer` of `size` bytes. `flags` is 0. Returns a
/// negative number if the buffer is too small or the scan failed.
int rtl_wlan_get_bgscan(const char* interface, int flags, void* buffer, int size);

/// The numeric code of a country that is given by its two letters; 0: unknown.
int kstr_regdmn_get_country_code(const char* country);

/// The default country of a region; null: none.
const char* kstr_regdmn_get_default_country(const char* region_code);

#ifdef __cplusplus
}
#endif

#endif

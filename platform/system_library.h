// The access point's system library: process registration, identity, checksums, load, lines and LEDs.

#ifndef PLATFORM_SYSTEM_LIBRARY_H
#define PLATFORM_SYSTEM_LIBRARY_H

#ifdef __cplusplus
extern "C" {
#endif

/// Installs the platform's handling of fault signals for the process. `flags` is 0.
void install_signal_handler(const char* app_name, int flags);

/// Registers the process with the platform. `instance_class` is 3 for the shell. The result is not examined.
int qln_app_init_with_instd(int instance_class, int pid);

/// Shows `message`, asks on the terminal, returns non-zero for yes.
int act_confirm(const char* message);

/// Restores the factory configuration and restarts the unit; `unattended` is 1 when nobody is to be asked.
/// The result is the command's result.
int sys_factory_reset(int unattended);

/// Writes the device serial number, terminated, into `buffer` of `size` bytes. `flag` is 0.
int read_sn(char* buffer, int size, int flag);

/// 0: legal host name; -2: longer than 36 characters; any other value: an illegal character.
int valid_hostname(const char* name);

/// Writes the printable firmware version, terminated, into `buffer` of `size` bytes.
int get_full_version_string(char* buffer, int size, const char* model_prefix, int major, int minor, const char* build);

/// Verifies the checksum of the partition open at `fd`; both arguments are 0. Negative: mismatch.
int osbios_CheckCRC(int fd, int arg1, int arg2);

/// Recomputes and stores the checksum of the partition open at `fd`: over `image`, the 262144 bytes just written, or
/// over the partition itself when `image` is null. Negative: failure.
int osbios_SetCrc(int fd, const void* image);

/// Fills a PlatformInfo of "platform/flash_layout.h", zeroed by the caller. The result is not examined.
int get_qln_platform_info(void* platform_info);

/// Non-zero: the interface is up.
int sys_intf_status(const char* interface);

/// Processor load in per cent.
int get_cpu_usage_rate(void);

/// Memory in use in per cent.
int get_memory_usage_rate(void);

/// Writes the uptime line, terminated, into `buffer` of `size` bytes.
int uptime_main(char* buffer, int size);

/// Stores the level of a general-purpose line through `value`.
int sys_get_gpio_status(int line, int* value);

/// Drives a general-purpose line.
int sys_set_gpio_status(int line, int value);

/// Non-zero: the reset key is released.
int sys_get_reset_key_status(void);

/// Shows message `message` on LED `led`.
int sys_set_led_action(int led, int message);

/// Starts the system LED test and returns its status code.
int sys_set_led_sys_test(void);

#ifdef __cplusplus
}
#endif

#endif

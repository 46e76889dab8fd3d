// The access point's system library: process registration, identity, checksums, load, GPIO lines and LEDs.

#ifndef PLATFORM_SYSTEM_LIBRARY_H
#define PLATFORM_SYSTEM_LIBRARY_H

#ifdef __cplusplus
extern "C" {
#endif

/// Installs the platform's handling of fault signals for the process. `flags` is 0.
void install_signal_handler(const char* app_name, int flags);

/// Registers the process with the platform. `instance_class` is 3 for the shell. The result is not examined.
int qln_app_init_with_instd(int instance_class, int pid);

/// Shows `message` on the terminal and waits for an answer. Returns non-zero for yes.
int act_confirm(const char* message);

/// Restores the factory configuration and restarts the device. If `unattended` is 1, the function must not ask the user
/// for confirmation. The command "factory-reset" returns the result of this function.
int sys_factory_reset(int unattended);

/// Writes the device serial number, terminated, into `buffer` of `size` bytes. `flag` is 0.
int read_sn(char* buffer, int size, int flag);

/// Checks a host name. 0: it is legal; -2: it has more than 36 characters; any other value: it has an illegal
/// character.
int valid_hostname(const char* name);

/// Writes the printable firmware version, terminated, into `buffer` of `size` bytes.
int get_full_version_string(char* buffer, int size, const char* model_prefix, int major, int minor, const char* build);

/// Verifies the checksum of the partition that is open at `fd`. The other two arguments are 0. Returns a negative
/// number if it does not match.
int osbios_CheckCRC(int fd, int arg1, int arg2);

/// Computes a checksum and stores it in the partition that is open at `fd`. The checksum is that of `image`, which is
/// the 262144 bytes that were just written to the partition. If `image` is null, the function reads the partition
/// instead. Returns a negative number if it fails.
int osbios_SetCrc(int fd, const void* image);

/// Fills `platform_info`, a PlatformInfo of "platform/flash_layout.h". The caller sets it to zero first. The shell
/// ignores the result.
int get_qln_platform_info(void* platform_info);

/// Returns non-zero if the interface is up.
int sys_intf_status(const char* interface);

/// The load of the processor in per cent.
int get_cpu_usage_rate(void);

/// The memory in use in per cent.
int get_memory_usage_rate(void);

/// Writes the uptime line, terminated, into `buffer` of `size` bytes.
int uptime_main(char* buffer, int size);

/// Stores the level of a general-purpose line in `value`: 0 is low, 1 is high. The result is not examined.
int sys_get_gpio_status(int line, int* value);

/// Sets the level of a general-purpose line: 0 is low, 1 is high. The result is not examined.
int sys_set_gpio_status(int line, int value);

/// Returns non-zero if the reset key is released.
int sys_get_reset_key_status(void);

/// Shows message `message` on LED `led`.
int sys_set_led_action(int led, int message);

/// Starts the system LED test and returns its status code.
int sys_set_led_sys_test(void);

#ifdef __cplusplus
}
#endif

#endif

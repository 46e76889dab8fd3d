// `get system` and `get qsky`: status displays that do not ask the CAPWAP daemon.

#ifndef DIAG_SYSTEM_INFO_H
#define DIAG_SYSTEM_INFO_H

/// `get system version`: prints the constants of the firmware and the serial number from the flash record. If the
/// record cannot be read, the serial number is empty. All handlers in this file ignore their words. Always returns 0.
int versionCommand(int argc, char** argv);

/// `get system performance`: prints the load of processor and memory in per cent, and the uptime. Always returns 0.
int performanceCommand(int argc, char** argv);

/// `get qsky info`: runs the diagnostic tool for the cloud. Always returns 0.
int cloudInfoCommand(int argc, char** argv);

#endif

// `get system` and `get qsky`: status displays that do not ask the CAPWAP daemon.

#ifndef DIAG_SYSTEM_INFO_H
#define DIAG_SYSTEM_INFO_H

/// `get system version`: prints the constants of the firmware and the serial number of the flash record, which is empty
/// if it cannot be read. All handlers here ignore their words. Always 0.
int versionCommand(int argc, char** argv);

/// `get system performance`: prints the load of processor and memory in per cent, and the uptime. Always 0.
int performanceCommand(int argc, char** argv);

/// `get qsky info`: runs the diagnostic tool for the cloud. Always 0.
int cloudInfoCommand(int argc, char** argv);

#endif

// `get system` and `get qsky`: what the shell learns without the CAPWAP daemon.

#ifndef DIAG_SYSTEM_INFO_H
#define DIAG_SYSTEM_INFO_H

/// `get system version`: the firmware's constants and the serial number of the flash record, empty where it cannot be
/// read. The words do not matter, here and below. Always 0.
int versionCommand(int argc, char** argv);

/// `get system performance`: load of processor and memory in per cent, and the platform's line of uptime. Always 0.
int performanceCommand(int argc, char** argv);

/// `get qsky info`: what the diagnostic tool says of the cloud. Always 0.
int cloudInfoCommand(int argc, char** argv);

#endif

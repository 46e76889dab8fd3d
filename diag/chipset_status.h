// `get vap chipset-status`: state and live settings of the wireless interfaces.

#ifndef DIAG_CHIPSET_STATUS_H
#define DIAG_CHIPSET_STATUS_H

/// `get vap chipset-status`: prints whether each wireless interface is up, and the driver's settings of those that are
/// up. For an operation that the driver does not have, prints 0, an empty text or "unknown". Always returns 0.
int chipsetStatusCommand(int argc, char** argv);

#endif

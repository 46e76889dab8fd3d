// `get vap chipset-status`: state and live settings of the wireless interfaces.

#ifndef DIAG_CHIPSET_STATUS_H
#define DIAG_CHIPSET_STATUS_H

/// `get vap chipset-status`: whether each wireless interface is up, and of one that is, its settings as the driver has
/// them; an operation that the driver has not counts as 0, an empty text or unknown. Always 0.
int chipsetStatusCommand(int argc, char** argv);

#endif

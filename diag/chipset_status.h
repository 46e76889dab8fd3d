// `get vap chipset-status`: state and live settings of the wireless interfaces.

#ifndef DIAG_CHIPSET_STATUS_H
#define DIAG_CHIPSET_STATUS_H

int chipsetStatusCommand(int argc, char** argv);

#endif

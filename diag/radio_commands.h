// Transmit power of the radios and its calibration.

#ifndef DIAG_RADIO_COMMANDS_H
#define DIAG_RADIO_COMMANDS_H

int txpowerCommand(int argc, char** argv);
int calibrationCommand(int argc, char** argv);

#endif

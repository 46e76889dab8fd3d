// Transmit power, calibration and country of the radios.

#ifndef DIAG_RADIO_COMMANDS_H
#define DIAG_RADIO_COMMANDS_H

int txpowerCommand(int argc, char** argv);
int calibrationCommand(int argc, char** argv);
int countryCommand(int argc, char** argv);

#endif

// Transmit power of the radios and its calibration.

#ifndef DIAG_RADIO_COMMANDS_H
#define DIAG_RADIO_COMMANDS_H

/// `txpower RADIO POWER[%]`: sets the power in dBm, or in per cent if the third word has a percent sign. Another number
/// of words prints the format. A word that is no number prints nothing. Returns 0, or -1 if the channel has no buffer.
int txpowerCommand(int argc, char** argv);

/// `calibration`: prints the targets of the calibration, which are constants. Always returns 0.
int calibrationCommand(int argc, char** argv);

#endif

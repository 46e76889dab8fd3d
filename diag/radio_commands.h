// Transmit power of the radios and its calibration.

#ifndef DIAG_RADIO_COMMANDS_H
#define DIAG_RADIO_COMMANDS_H

/// `txpower RADIO POWER[%]`: dBm, or per cent where a percent sign stands anywhere in the third word. Another number of
/// words draws the format, a number that is none draws nothing. 0, or -1 when the channel has no buffer.
int txpowerCommand(int argc, char** argv);

/// `calibration`: shows the targets of the calibration, which are constants. Always 0.
int calibrationCommand(int argc, char** argv);

#endif

// Transmit power, as the daemon is told of it.

#ifndef DIAG_RADIO_POWER_H
#define DIAG_RADIO_POWER_H

/// Asks the daemon to set a radio's transmit power, in dBm or in per cent, and says so when the daemon cannot be asked.
/// The daemon checks the values, of which it gets the low 8 and 16 bits. 0, or -1 without a word when the channel has
/// no buffer.
int setRadioPower(int radio, int power, bool percent);

#endif

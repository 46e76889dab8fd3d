// Sending the transmit power to the daemon.

#ifndef DIAG_RADIO_POWER_H
#define DIAG_RADIO_POWER_H

/// Asks the daemon to set the transmit power of a radio, in dBm or in per cent. Prints a message if the daemon cannot
/// be asked. Sends the low 8 bits of the radio and the low 16 bits of the power; the daemon checks them. Returns 0, or
/// -1 without a message if the channel has no buffer.
int setRadioPower(int radio, int power, bool percent);

#endif

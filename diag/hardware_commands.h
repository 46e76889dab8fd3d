// Hardware tests: reset key, general-purpose lines, power LED, background scan, throughput.

#ifndef DIAG_HARDWARE_COMMANDS_H
#define DIAG_HARDWARE_COMMANDS_H

/// `rstkt`: prints whether the reset key is pressed. Always returns 0.
int rstktCommand(int argc, char** argv);

/// `gpio r LINE` and `gpio w LINE VALUE`: prints the value that was read or written. Only the first letter of `r` or
/// `w` counts. Fewer than three words print the format. A word that is no number prints nothing. Always returns 0.
int gpioCommand(int argc, char** argv);

/// `getscan RADIO`: runs a background scan on the second radio if the number is above 0, otherwise on the first, and
/// discards the result. Without a word prints the format. A word that is no number prints nothing. Returns 0, or -1 if
/// there is no memory for the result.
int getscanCommand(int argc, char** argv);

/// `sptest`: runs the throughput test without its output, and prints the SSIDs to associate with. Always returns 0.
int sptestCommand(int argc, char** argv);

/// `led_test power on|off`: starts the test of all LEDs, waits a second and switches the power LED, which is on while
/// its line is low. Any other word than "on" switches it off. Returns 0, or -1 without a message if the LED is not
/// `power`.
int ledTestCommand(int argc, char** argv);

#endif

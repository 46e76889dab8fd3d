// Hardware tests: reset key, general-purpose lines, power LED, background scan, throughput.

#ifndef DIAG_HARDWARE_COMMANDS_H
#define DIAG_HARDWARE_COMMANDS_H

/// `rstkt`: says whether the reset key is pressed. Always 0.
int rstktCommand(int argc, char** argv);

/// `gpio r LINE` and `gpio w LINE VALUE`, of whose first word only the first letter counts: says what was read or
/// written. Fewer than three words draw the format, a number that is none draws nothing. Always 0.
int gpioCommand(int argc, char** argv);

/// `getscan RADIO`: a background scan on the second radio for a number above 0, otherwise on the first; its result is
/// thrown away. Without a number the format, or nothing. 0, or -1 when there is no memory for a result.
int getscanCommand(int argc, char** argv);

/// `sptest`: runs the throughput test, unheard, and says what to associate with. Always 0.
int sptestCommand(int argc, char** argv);

/// `led_test power on|off`: lets the LEDs test themselves, waits a second and drives the power LED, whose line is low
/// while it shines. Any word but "on" puts it out. 0, or -1 without a word when this is not the power LED.
int ledTestCommand(int argc, char** argv);

#endif

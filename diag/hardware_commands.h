// Hardware tests: reset key, general-purpose lines, power LED, background scan, throughput.

#ifndef DIAG_HARDWARE_COMMANDS_H
#define DIAG_HARDWARE_COMMANDS_H

int rstktCommand(int argc, char** argv);
int gpioCommand(int argc, char** argv);
int getscanCommand(int argc, char** argv);
int sptestCommand(int argc, char** argv);
int ledTestCommand(int argc, char** argv);

#endif

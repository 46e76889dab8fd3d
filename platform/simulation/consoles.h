// The terminals on which somebody sits before a shell of the device.

#ifndef PLATFORM_SIMULATION_CONSOLES_H
#define PLATFORM_SIMULATION_CONSOLES_H

/// Makes the terminal on standard output, if it is one, a console for as long as this process lives.
void openConsole();

/// Writes a line to all of them.
void writeToConsoles(const char* line);

#endif

// The consoles of the simulated device: every terminal on which one of its shells runs.

#ifndef PLATFORM_SIMULATION_CONSOLES_H
#define PLATFORM_SIMULATION_CONSOLES_H

/// If the standard output is a terminal, makes it a console while this process lives.
void openConsole();

/// Writes a line to all consoles.
void writeToConsoles(const char* line);

#endif

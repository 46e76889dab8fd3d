// The first step of a program on the simulated device.

#ifndef PLATFORM_SIMULATION_ENTER_DEVICE_H
#define PLATFORM_SIMULATION_ENTER_DEVICE_H

/// Sets PATH to the device's "bin" and "usr/bin" alone, and sets the name of the process, by which the device's tools
/// find it. Ends the process with a message if CLI_SIM_ROOT names no folder with "bin" and "usr/bin", or if a variable
/// cannot be set.
void enterDevice(const char* app);

#endif

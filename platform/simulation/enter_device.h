// The first step of a program on the simulated device.

#ifndef PLATFORM_SIMULATION_ENTER_DEVICE_H
#define PLATFORM_SIMULATION_ENTER_DEVICE_H

/// Makes the device's "bin" and "usr/bin" all of PATH and gives the process the name that the device's tools know it
/// by. Ends the process with a message when CLI_SIM_ROOT names no folder with the folders of its tools, or when one of
/// the two variables cannot be set; nothing was then run.
void enterDevice(const char* app);

#endif

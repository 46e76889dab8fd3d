// The signals that a fault of a program raises.

#ifndef PLATFORM_SIMULATION_FAULT_SIGNALS_H
#define PLATFORM_SIMULATION_FAULT_SIGNALS_H

#include <csignal>

inline constexpr int kFaultSignals[] = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL};

#endif

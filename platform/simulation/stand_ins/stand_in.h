// The simulated versions of the device's tools that show or change interfaces and radios.

#ifndef PLATFORM_SIMULATION_STAND_INS_STAND_IN_H
#define PLATFORM_SIMULATION_STAND_INS_STAND_IN_H

#include <span>
#include <string>
#include <vector>

/// The arguments of a tool, without its name.
using Words = std::span<char*>;

void brctl(Words words);
void ifconfig(Words words);
void ip(Words words);
void iwconfig(Words words);
void iwpriv(Words words);

/// The simulated tools that are scripts call these functions. printMac() prints the hardware address of an interface.
/// printInterfaces() prints the names of all interfaces. endUnlessUp() exits with 1 if an interface is down.
/// endUnlessReached() exits with 1 if an address does not answer.
void printMac(Words words);
void printInterfaces(Words words);
void endUnlessUp(Words words);
void endUnlessReached(Words words);

/// Prints the name of the tool and a message, and ends the tool.
[[noreturn, gnu::format(printf, 1, 2)]] void fail(const char* format, ...);

/// The names of all interfaces, in alphabetical order.
std::vector<std::string> interfaceNames();

bool isInterface(const std::string& name);

bool isUp(const std::string& interface);

/// The hardware address: six pairs of upper-case hexadecimal digits, separated by colons.
std::string macOf(const std::string& interface);

/// Whether `text` is a decimal number of less than ten digits.
bool isNumber(const std::string& text);

#endif

// The stand-ins for the device's tools that show or change interfaces and radios.

#ifndef PLATFORM_SIMULATION_STAND_INS_STAND_IN_H
#define PLATFORM_SIMULATION_STAND_INS_STAND_IN_H

#include <span>
#include <string>
#include <vector>

/// The words behind the tool's name.
using Words = std::span<char*>;

void brctl(Words words);
void ifconfig(Words words);
void ip(Words words);
void iwconfig(Words words);
void iwpriv(Words words);

/// For the stand-ins that are scripts: the address of an interface; the names of all interfaces; whether one is up;
/// whether an address answers.
void printMac(Words words);
void printInterfaces(Words words);
void endUnlessUp(Words words);
void endUnlessReached(Words words);

/// Ends the tool with a message, after its name.
[[noreturn, gnu::format(printf, 1, 2)]] void fail(const char* format, ...);

/// In their alphabetical order.
std::vector<std::string> interfaceNames();

bool isInterface(const std::string& name);

bool isUp(const std::string& interface);

/// Six pairs of upper-case hexadecimal digits, separated by colons.
std::string macOf(const std::string& interface);

/// Whether `text` is a decimal number of less than ten digits.
bool isNumber(const std::string& text);

#endif

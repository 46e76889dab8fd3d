// What the fuzz targets share. Each run of a target gets one input, in the process of the fuzzer, on a simulated device
// of its own. The system shell is replaced: it checks each command text and runs nothing.

#ifndef TESTS_FUZZ_FUZZ_H
#define TESTS_FUZZ_FUZZ_H

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct FuzzTarget {
    const char* name;
    void (*run)(std::string_view input);
    bool printsControlBytes; ///< false: a control byte on the standard output ends the fuzzer, except line feed and tab
};

extern const std::span<const FuzzTarget> kShellTargets;
extern const std::span<const FuzzTarget> kConfTargets;
extern const std::span<const FuzzTarget> kRecordTargets;

/// Ends the fuzzer with a message if `holds` is false.
void require(bool holds, const char* property, std::string_view found = "");

/// What `action` prints to the standard output.
std::string outputOf(const std::function<void()>& action);

/// Writes a file of the device. Removes the file if `bytes` is empty.
void writeFile(const char* devicePath, std::string_view bytes);

/// The lines of an input, without their line feeds, at most `limit`.
std::vector<std::string> linesOf(std::string_view input, std::size_t limit);

/// Removes the first byte of the input and returns it; 0 if there is none.
unsigned takeByte(std::string_view& input);

#endif

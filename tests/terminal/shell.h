// The built management shell on a small device of its own.

#ifndef TESTS_TERMINAL_SHELL_H
#define TESTS_TERMINAL_SHELL_H

#include <string>
#include <vector>

#include "tests/support/device.h"
#include "tests/support/terminal.h"

/// The device is named "ap"; its tools record their calls and do nothing.
class ShellTest : public DeviceTest
{
protected:
    static constexpr const char* kPrompt = "ap  # ";
    static constexpr const char* kFreshPrompt = "\nap  # "; ///< at the start of a line

    ShellTest();

    /// The shell, started by the test itself.
    static Program shell(const std::vector<std::string>& variables = {});
    /// The shell below a system shell that goes by the name `parent` and says "back" when it comes back.
    static Program shellBelow(const std::string& parent);

    /// Types a line at the prompt. Returns what comes between it and the next prompt, with plain line feeds.
    static std::string ask(Terminal& terminal, const std::string& line);

    struct Run {
        std::string output;
        std::string errors;
        int status; ///< exit status
    };
    /// Gives the shell the lines as its standard input, from a file.
    [[nodiscard]] Run runScript(const std::string& lines, const std::string& arguments = "") const;

    /// Names of what the device's "/tmp" holds, in order, with a blank behind each.
    [[nodiscard]] std::string temporaryFiles() const;
};

#endif

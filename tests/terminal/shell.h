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
    static constexpr const char* kControlC = "\x03";

    ShellTest();

    /// The shell, started by the test itself.
    static Program shell(const std::vector<std::string>& variables = {});
    /// The shell below a system shell that goes by the name `parent` and says "back" when it comes back.
    static Program shellBelow(const std::string& parent);

    /// A shell that waits at its prompt.
    class Session : public Terminal
    {
    public:
        explicit Session(const Program& program = shell()) : Terminal(program) { waitForRow(kPrompt); }

        /// Types keys that end the line and waits for the next prompt.
        void endLine(const std::string& keys);
        /// Types a line. Returns what the screen shows between it and the next prompt.
        std::string ask(const std::string& line);
        /// The rows between the cursor's and the last one above it that has a prompt.
        [[nodiscard]] std::string rowsAbove() const;
    };
};

#endif

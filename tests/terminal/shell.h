// The management shell on a small device.

#ifndef TESTS_TERMINAL_SHELL_H
#define TESTS_TERMINAL_SHELL_H

#include <string>
#include <vector>

#include "tests/support/device.h"
#include "tests/support/terminal.h"

/// A device named "ap", whose tools only record their calls.
class ShellTest : public DeviceTest
{
protected:
    static constexpr const char* kPrompt = "ap  # ";
    static constexpr const char* kControlC = "\x03";

    ShellTest();

    /// The shell as a child process of the test.
    static Program shell(const std::vector<std::string>& variables = {});
    /// The shell as a child of a system shell with the name `parent`, which prints "back" when the shell has ended.
    static Program shellBelow(const std::string& parent);

    /// A shell at its prompt.
    class Session : public Terminal
    {
    public:
        explicit Session(const Program& program = shell()) : Terminal(program) { waitForRow(kPrompt); }

        /// Types keys that end a line, and waits for the next prompt.
        void endLine(const std::string& keys);
        /// Types a line. Returns the rows between the line and the next prompt.
        std::string ask(const std::string& line);
        /// The rows between the last prompt above the cursor and the row of the cursor.
        [[nodiscard]] std::string rowsAbove() const;
    };
};

#endif

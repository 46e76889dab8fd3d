// A program under a pseudo-terminal, driven as a user drives it.

#ifndef TESTS_SUPPORT_TERMINAL_H
#define TESTS_SUPPORT_TERMINAL_H

#include <string>
#include <termios.h>
#include <unistd.h>
#include <vector>

/// What to start: `file`, under the names and words in `arguments`, the program's own name first. `variables` are
/// "NAME=value" and go over the test's environment; the terminal calls itself "dumb" unless they say otherwise.
struct Program {
    std::string file;
    std::vector<std::string> arguments;
    std::vector<std::string> variables;
};

/// The terminal of one program, 24 rows of 200 columns. Every wait has a deadline; one that passes fails the test and
/// shows what came instead. The program is hung up and ended with the object.
class Terminal
{
public:
    explicit Terminal(const Program& program);
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void send(const std::string& keys) const;
    /// Reads until `text` has come. Returns and consumes everything up to its end.
    std::string waitFor(const std::string& text);
    /// Reads until the program and all that it left behind have let go of the terminal.
    std::string readToEnd();
    /// The wait status of the program. What it prints meanwhile is kept.
    int waitForExit();

    void resize(unsigned short rows, unsigned short columns) const;
    void hangUp();
    /// Whether the terminal's modes are those that the program found.
    [[nodiscard]] bool modesAreInitial() const;
    [[nodiscard]] pid_t pid() const { return pid_; }

private:
    /// Waits for output. False at the end of it and at the deadline.
    bool readMore(double deadline);

    termios initialModes_{};
    int master_ = -1;
    pid_t pid_ = -1;
    int status_ = -1; ///< valid once pid_ is -1
    std::string unread_;
};

#endif

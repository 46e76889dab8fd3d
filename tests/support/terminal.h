// A program under a pseudo-terminal, driven and looked at as by a user.

#ifndef TESTS_SUPPORT_TERMINAL_H
#define TESTS_SUPPORT_TERMINAL_H

#include <functional>
#include <memory>
#include <string>
#include <termios.h>
#include <unistd.h>
#include <vector>

#include <vterm.h>

/// What to start: `file`, under the names and words in `arguments`, the program's own name first. `variables` are
/// "NAME=value" and go over the test's environment; the terminal calls itself "xterm" unless they say otherwise.
struct Program {
    std::string file;
    std::vector<std::string> arguments;
    std::vector<std::string> variables;
};

/// The terminal of one program, 24 rows of 80 columns. Every wait has a deadline; one that passes fails the test and
/// shows the screen. The program is hung up and ended with the object.
class Terminal
{
public:
    explicit Terminal(const Program& program);
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void send(const std::string& keys) const;
    /// Reads until `text` has come. Returns and consumes everything up to its end, control sequences included.
    std::string waitFor(const std::string& text);
    /// Waits until the terminal is quiet and its cursor stands right behind `text`, which is all that its row has.
    void waitForRow(const std::string& text);
    /// Waits until the terminal is quiet and shows `text` anywhere.
    void waitForScreen(const std::string& text);
    /// Waits until the terminal is quiet, shows exactly `text` and has its cursor there.
    void waitForExactly(const std::string& text, VTermPos place);
    /// Reads until the program and all that it left behind have let go of the terminal.
    void waitForEnd();
    /// The exit status of the program, or the signal that ended it, negative.
    int waitForExit();

    /// A row, counted from 0, and all rows down to the last that has a text; none with the blanks at its end.
    [[nodiscard]] std::string row(int number) const;
    [[nodiscard]] std::string screen() const;
    [[nodiscard]] VTermPos cursor() const;
    /// Whether the terminal is as the program found it: its modes are, and it does not put pastes in brackets.
    [[nodiscard]] bool isAsFound() const;
    [[nodiscard]] pid_t pid() const { return pid_; }

    void resize(unsigned short rows, unsigned short columns) const;
    void hangUp();

private:
    /// Waits for output. False when none has come.
    bool readMore(int milliseconds);
    void waitUntil(const std::function<bool()>& isDone, const std::string& what);

    termios initialModes_{};
    int master_ = -1;
    pid_t pid_ = -1;
    bool hasEnded_ = false;
    std::string shown_;
    std::size_t consumed_ = 0; ///< of what was shown
    std::unique_ptr<VTerm, void (*)(VTerm*)> emulator_;
};

#endif

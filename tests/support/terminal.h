// A program on a pseudo-terminal, and an emulated screen.

#ifndef TESTS_SUPPORT_TERMINAL_H
#define TESTS_SUPPORT_TERMINAL_H

#include <functional>
#include <memory>
#include <string>
#include <termios.h>
#include <unistd.h>
#include <vector>

#include <vterm.h>

/// A program to start. `arguments` begin with the name of the program. `variables` have the form "NAME=value" and are
/// added to the environment of the test. TERM is "xterm" if they do not set it.
struct Program {
    std::string file;
    std::vector<std::string> arguments;
    std::vector<std::string> variables;
};

/// The terminal of one program, 24 rows of 80 columns. Every wait has a time limit, after which the test fails and
/// prints the screen. The end of the object hangs up the terminal and ends the program.
class Terminal
{
public:
    explicit Terminal(const Program& program);
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    void send(const std::string& keys) const;
    /// Reads until `text` has arrived. Returns everything up to its end, with control sequences, and consumes it.
    std::string waitFor(const std::string& text);
    /// Waits until there is no more output and the row of the cursor holds only `text`, with the cursor after it.
    void waitForRow(const std::string& text);
    /// Waits until there is no more output and the screen shows `text`.
    void waitForScreen(const std::string& text);
    /// Waits until there is no more output and the screen shows exactly `text`, with the cursor at this place.
    void waitForExactly(const std::string& text, VTermPos place);
    /// Reads until the program, and every process that it started, has closed the terminal.
    void waitForEnd();
    /// The exit status of the program, or the negative number of the signal that ended it.
    int waitForExit();

    /// row() returns one row, counted from 0. screen() returns all rows up to the last one that has text. Both omit the
    /// blanks at the end of a row.
    [[nodiscard]] std::string row(int number) const;
    [[nodiscard]] std::string screen() const;
    [[nodiscard]] VTermPos cursor() const;
    /// Whether the terminal has the modes that the program found, and bracketed paste is off.
    [[nodiscard]] bool isAsFound() const;
    [[nodiscard]] pid_t pid() const { return pid_; }

    void resize(unsigned short rows, unsigned short columns) const;
    void hangUp();

private:
    /// Waits for output. Returns false if none has arrived.
    bool readMore(int milliseconds);
    void waitUntil(const std::function<bool()>& isDone, const std::string& what);

    termios initialModes_{};
    int master_ = -1;
    pid_t pid_ = -1;
    bool hasEnded_ = false;
    std::string shown_;
    std::size_t consumed_ = 0; ///< characters of `shown_` that the waits have consumed; waitFor() searches after them
    std::unique_ptr<VTerm, void (*)(VTerm*)> emulator_;
};

#endif

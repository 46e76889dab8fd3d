// The signals of a session. The handlers only set flags. The shell looks at the flags while it waits for a key.

#ifndef SHELL_SIGNALS_H
#define SHELL_SIGNALS_H

#include <csignal>
#include <sys/types.h>

/// Installs the signal handlers of a session. A signal that ends the process, exit() and abort() restore the terminal
/// first. If a library has installed a handler for a signal that ends the process, that handler stays. If the parent
/// process ignores such a signal, it stays ignored.
void catchSignals();

/// Sets the file that is removed if a signal or exit() ends the process; null means none. `path` is a path of this
/// system, not a device path. The caller keeps it valid until the next call.
void removeAtEnd(const char* path);

/// Returns whether `signal` has arrived since the last call, and resets its flag.
bool takeSignal(int signal);

/// Whether Ctrl-C or Ctrl-\ was pressed, or has ended a tool, since the last forgetInterrupt().
bool isInterrupted();
void noteInterrupt();
void forgetInterrupt();

/// Notices an interrupt while system() runs a tool. system() makes this process ignore interrupts, and the tool may
/// handle them itself. Therefore a child process in the same process group waits for them.
class InterruptWatch
{
public:
    explicit InterruptWatch(bool isNeeded);
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// Ends the child process. Returns whether it received an interrupt. To be called once.
    bool end();

private:
    pid_t child_; ///< -1: there is none
};

/// Blocks the session's signals while an object lives. Pass `outside()` to ppoll() to receive them there. While an
/// object lives, SIGTSTP only sets a flag. Otherwise SIGTSTP stops the process.
class HeldSignals
{
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    [[nodiscard]] const sigset_t& outside() const { return outside_; }

    /// Stops the process by SIGTSTP with its default action. Returns when the process is continued.
    void stop();

private:
    sigset_t outside_;
    struct sigaction stopAction_;
};

#endif

// The signals of a session. They are only noted when they come; what they ask for is done where the shell waits for a
// key, and nowhere else.

#ifndef SHELL_SIGNALS_H
#define SHELL_SIGNALS_H

#include <csignal>
#include <sys/types.h>

/// Catches the signals of a session. What ends the process, exit() and abort() included, restores the terminal first
/// and then does its work; other signals that somebody else handles, or asked to be ignored, stay as they are.
void catchSignals();

/// Has a file removed when a signal or exit() ends the process. `path` stays valid until another one, or null, takes
/// its place.
void removeAtEnd(const char* path);

/// Whether `signal` came since this was last asked; it is then forgotten.
bool takeSignal(int signal);

/// Whether Ctrl-C or Ctrl-\ came, or ended a tool, since forgetInterrupt().
bool isInterrupted();
void noteInterrupt();
void forgetInterrupt();

/// Notices an interrupt that system() has this process ignore and that the tool takes for itself: a child of the same
/// process group waits for it.
class InterruptWatch
{
public:
    explicit InterruptWatch(bool isNeeded);
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// Whether one came. To be called once.
    bool end();

private:
    pid_t child_; ///< -1: there is none
};

/// Blocks the session's signals while an object lives. Pass `outside()` to ppoll() to receive them there. Ctrl-Z, which
/// otherwise just stops the process, is noted like the others.
class HeldSignals
{
public:
    HeldSignals();
    ~HeldSignals();
    HeldSignals(const HeldSignals&) = delete;
    HeldSignals& operator=(const HeldSignals&) = delete;

    [[nodiscard]] const sigset_t& outside() const { return outside_; }

    /// Stops the process as Ctrl-Z does without anybody to catch it, until it is continued.
    void stop();

private:
    sigset_t outside_;
    struct sigaction stopAction_;
};

#endif

// The signals of a session. They are only noted when they come; what they ask for is done where the shell waits for a
// key, and nowhere else.

#ifndef SHELL_SIGNALS_H
#define SHELL_SIGNALS_H

#include <csignal>

/// Catches the signals of a session. What ends the process restores the terminal first and then does its work; what
/// somebody else handles, or asked to be ignored, stays as it is.
void catchSignals();

/// Has a file removed when a signal ends the process. `path` stays valid until another one, or null, takes its place.
void removeAtEnd(const char* path);

/// Whether `signal` came since this was last asked; it is then forgotten.
bool takeSignal(int signal);

/// Whether Ctrl-C or Ctrl-\ came, or ended a tool, since forgetInterrupt().
bool isInterrupted();
void noteInterrupt();
void forgetInterrupt();

/// While an object lives every signal of a session waits, but for where `outside()` is given to the kernel as the mask.
/// Ctrl-Z, which otherwise just stops the process, is noted like the others.
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

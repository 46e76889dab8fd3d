#include "shell/signals.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <readline/readline.h>

#include "shell/terminal.h"

namespace
{

/// These interrupt a system call of a library; all other signals restart it.
constexpr int kInterrupts[] = {SIGINT, SIGQUIT};
constexpr int kEvents[] = {SIGALRM, SIGCONT, SIGWINCH};
constexpr int kEndings[] = {SIGHUP, SIGTERM, SIGPIPE, SIGUSR1, SIGUSR2};

constinit volatile std::sig_atomic_t noted[NSIG]{};
constinit const char* volatile removedAtEnd = nullptr;
constinit pid_t session = -1;
constinit struct sigaction abortAction {
};

/// A thread of a library does not block the session's signals, so it may receive one. In such a thread, sends the
/// signal to the session's thread and returns true. Returns false in the session's thread. Its thread number is the
/// process number.
bool passToSession(int signal)
{
    const pid_t process = getpid();
    return syscall(SYS_gettid) != process && syscall(SYS_tgkill, process, process, signal) == 0;
}

void note(int signal)
{
    if (!passToSession(signal))
        noted[signal] = 1;
}

/// Removes the file of removeAtEnd() and restores the terminal. Signals are blocked while readline changes the modes of
/// the terminal, so a signal handler never calls rl_deprep_terminal() in the middle of that.
void leave()
{
    if (removedAtEnd != nullptr)
        unlink(removedAtEnd);
    rl_deprep_terminal();
    restoreTerminal();
}

/// Called by exit(), which readline calls if it gets no memory. A forked child that calls exit() must not restore the
/// terminal.
void leaveAtExit()
{
    if (getpid() == session)
        leave();
}

void end(int signal)
{
    if (passToSession(signal))
        return;
    leave();
    if (signal == SIGABRT)
        sigaction(SIGABRT, &abortAction, nullptr);
    else
        std::signal(signal, SIG_DFL);
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal);
    raise(signal);
    sigprocmask(SIG_UNBLOCK, &one, nullptr);
}

sigset_t sessionSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kInterrupts)
        sigaddset(&signals, signal);
    for (const int signal : kEvents)
        sigaddset(&signals, signal);
    for (const int signal : kEndings)
        sigaddset(&signals, signal);
    sigaddset(&signals, SIGABRT);
    sigaddset(&signals, SIGTSTP);
    return signals;
}

struct sigaction actionFor(void (*handler)(int), int flags)
{
    struct sigaction action {
    };
    action.sa_handler = handler;
    action.sa_flags = flags;
    action.sa_mask = sessionSignals();
    return action;
}

} // namespace

void catchSignals()
{
    session = getpid();
    std::atexit(leaveAtExit);
    const struct sigaction interrupt = actionFor(note, 0);
    for (const int signal : kInterrupts)
        sigaction(signal, &interrupt, nullptr);
    const struct sigaction event = actionFor(note, SA_RESTART);
    for (const int signal : kEvents)
        sigaction(signal, &event, nullptr);
    const struct sigaction ending = actionFor(end, SA_RESTART);
    for (const int signal : kEndings) {
        struct sigaction old;
        if (sigaction(signal, nullptr, &old) == 0 && old.sa_handler == SIG_DFL)
            sigaction(signal, &ending, nullptr);
    }
    sigaction(SIGABRT, &ending, &abortAction);
    // The process that started this one, or a library, may have left signals blocked and SIGCHLD ignored.
    sigprocmask(SIG_UNBLOCK, &ending.sa_mask, nullptr);
    struct sigaction child;
    if (sigaction(SIGCHLD, nullptr, &child) == 0 && child.sa_handler == SIG_IGN)
        std::signal(SIGCHLD, SIG_DFL);
}

void removeAtEnd(const char* path)
{
    removedAtEnd = path;
}

bool takeSignal(int signal)
{
    const bool came = noted[signal] != 0;
    noted[signal] = 0;
    return came;
}

bool isInterrupted()
{
    return noted[SIGINT] != 0 || noted[SIGQUIT] != 0;
}

void noteInterrupt()
{
    note(SIGINT);
}

void forgetInterrupt()
{
    for (const int signal : kInterrupts)
        noted[signal] = 0;
}

InterruptWatch::InterruptWatch(bool isNeeded) : child_(-1)
{
    if (!isNeeded)
        return;
    sigset_t awaited;
    sigset_t old;
    sigemptyset(&awaited);
    for (const int signal : kInterrupts)
        sigaddset(&awaited, signal);
    sigaddset(&awaited, SIGTERM);
    sigprocmask(SIG_BLOCK, &awaited, &old);
    child_ = fork();
    if (child_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        int came = SIGTERM;
        sigwait(&awaited, &came); // if several are pending, the one with the lowest number
        _exit(came);
    }
    sigprocmask(SIG_SETMASK, &old, nullptr);
}

bool InterruptWatch::end()
{
    int status = 0;
    if (child_ < 0)
        return false;
    kill(child_, SIGTERM);
    while (waitpid(child_, &status, 0) < 0 && errno == EINTR)
        continue;
    child_ = -1;
    return WIFEXITED(status) && WEXITSTATUS(status) != SIGTERM;
}

HeldSignals::HeldSignals()
{
    const sigset_t signals = sessionSignals();
    sigprocmask(SIG_BLOCK, &signals, &outside_);
    sigaction(SIGTSTP, nullptr, &stopAction_);
    if (stopAction_.sa_handler == SIG_DFL) {
        const struct sigaction stop = actionFor(note, SA_RESTART);
        sigaction(SIGTSTP, &stop, nullptr);
    }
}

HeldSignals::~HeldSignals()
{
    sigaction(SIGTSTP, &stopAction_, nullptr);
    sigprocmask(SIG_SETMASK, &outside_, nullptr);
}

void HeldSignals::stop()
{
    const struct sigaction byDefault = actionFor(SIG_DFL, 0);
    struct sigaction noting;
    sigset_t held;
    sigaction(SIGTSTP, &byDefault, &noting);
    sigprocmask(SIG_SETMASK, &outside_, &held);
    // If SIGCONT has arrived, the process was already stopped and resumed once: do not stop it again.
    if (noted[SIGCONT] == 0)
        raise(SIGTSTP);
    sigprocmask(SIG_SETMASK, &held, nullptr);
    sigaction(SIGTSTP, &noting, nullptr);
}

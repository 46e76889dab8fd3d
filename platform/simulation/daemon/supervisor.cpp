#include "platform/simulation/daemon/supervisor.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/channel_socket.h"
#include "platform/simulation/daemon/worker.h"
#include "platform/simulation/debug_log.h"
#include "platform/simulation/fault_signals.h"

namespace
{

constexpr char kPidFile[] = "/tmp/cwWtpd.pid";

constexpr char kTerminalsLock[] = "/tmp/terminals";

constexpr int kEnders[] = {SIGTERM, SIGINT, SIGHUP};

constexpr timespec kRestartDelay = {0, 250'000'000};

/// Exit status of a worker that cannot serve the channel. It is not started again.
constexpr int kCannotServe = 3;

/// Replaces the file with rename(), so that a reader never finds a partly written process id.
bool writePidFile()
{
    const std::string draft = std::string(kPidFile) + ".new";
    FILE* file = std::fopen(DeviceFile(draft.c_str()).path(), "we");
    if (file == nullptr)
        return false;
    std::fprintf(file, "%d\n", getpid());
    return std::fclose(file) == 0 && std::rename(DeviceFile(draft.c_str()).path(), DeviceFile(kPidFile).path()) == 0;
}

void recordCrash(pid_t worker, int fault)
{
    char text[100];
    std::snprintf(text, sizeof text, "%s cwWtpd[%d]: %s", SimTime().text, worker, sigdescr_np(fault));
    simAddToLog(kSimCrashes, text);
}

/// Whether a terminal of the device is open. Each terminal holds a shared lock on the file. If there is none, keeps the
/// exclusive lock, so that a terminal that opens now waits until this process has ended.
bool terminalIsOpen()
{
    const int terminals = open(DeviceFile(kTerminalsLock).path(), O_RDONLY | O_CLOEXEC);
    if (terminals < 0 || flock(terminals, LOCK_EX | LOCK_NB) == 0)
        return false;
    close(terminals);
    return true;
}

class Supervisor
{
public:
    Supervisor(int lock, pid_t parent) : lock_(lock), parent_(parent) {}

    int run()
    {
        holdSignals();
        bool goesOn = startWorker();
        int status = goesOn ? EXIT_SUCCESS : EXIT_FAILURE;
        while (goesOn) {
            const int signal = awaitSignal();
            if (isForsaken() || sigismember(&enders_, signal) == 1) {
                goesOn = false;
            } else if (signal == SIGCHLD && !replaceWorker()) {
                goesOn = false;
                status = EXIT_FAILURE;
            }
        }
        endWorker();
        unlink(DeviceFile(kPidFile).path());
        unlink(DeviceFile(kChannelSocket).path());
        return status;
    }

private:
    void holdSignals()
    {
        sigemptyset(&enders_);
        for (const int signal : kEnders) {
            // Keep SIGINT ignored if the system shell has started this process in the background.
            struct sigaction inherited;
            if (sigaction(signal, nullptr, &inherited) == 0 && (signal == SIGTERM || inherited.sa_handler != SIG_IGN))
                sigaddset(&enders_, signal);
        }
        awaited_ = enders_;
        sigaddset(&awaited_, SIGCHLD);
        std::signal(SIGCHLD, SIG_DFL);
        sigprocmask(SIG_BLOCK, &awaited_, &previous_);
    }

    bool startWorker()
    {
        const pid_t supervisor = getpid();
        worker_ = fork();
        if (worker_ == 0)
            becomeWorker(supervisor);
        if (worker_ < 0)
            std::perror("cwWtpd: the worker");
        return worker_ > 0;
    }

    [[noreturn]] void becomeWorker(pid_t supervisor) const
    {
        close(lock_);
        prctl(PR_SET_NAME, "cwWtpd");
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (const int fault : kFaultSignals)
            std::signal(fault, SIG_DFL);
        const rlimit noCoreFile{0, 0};
        setrlimit(RLIMIT_CORE, &noCoreFile);
        sigprocmask(SIG_SETMASK, &previous_, nullptr);
        if (getppid() != supervisor)
            _exit(EXIT_SUCCESS);
        if (writePidFile())
            runWorker();
        std::perror("cwWtpd: the message channel");
        _exit(kCannotServe);
    }

    /// If the worker has ended, starts another one. Returns false if the supervisor must end.
    bool replaceWorker()
    {
        int status = 0;
        if (waitpid(worker_, &status, WNOHANG) != worker_)
            return true;
        for (const int fault : kFaultSignals)
            if (WIFSIGNALED(status) && WTERMSIG(status) == fault)
                recordCrash(worker_, fault);
        worker_ = -1;
        if (WIFEXITED(status) && WEXITSTATUS(status) == kCannotServe)
            return false;
        nanosleep(&kRestartDelay, nullptr);
        return startWorker();
    }

    void endWorker() const
    {
        if (worker_ <= 0)
            return;
        kill(worker_, SIGKILL);
        waitpid(worker_, nullptr, 0);
    }

    /// Waits for a signal. If the end of the last terminal must be noticed, waits at most one second, because no signal
    /// reports it. The end of the parent raises SIGCHLD.
    int awaitSignal() const
    {
        constexpr timespec kSecond = {1, 0};
        return servesTerminals_ ? sigtimedwait(&awaited_, nullptr, &kSecond) : sigwaitinfo(&awaited_, nullptr);
    }

    /// Whether the last terminal was closed. If none was open at the start: whether the parent has ended.
    bool isForsaken() const { return servesTerminals_ ? !terminalIsOpen() : getppid() != parent_; }

    int lock_;
    pid_t parent_;
    bool servesTerminals_ = terminalIsOpen();
    pid_t worker_ = -1;
    sigset_t enders_{};
    sigset_t awaited_{};
    sigset_t previous_{};
};

} // namespace

int superviseWorkers(int lock, pid_t parent)
{
    prctl(PR_SET_NAME, "cwMonitor");
    prctl(PR_SET_PDEATHSIG, SIGCHLD);
    return Supervisor(lock, parent).run();
}

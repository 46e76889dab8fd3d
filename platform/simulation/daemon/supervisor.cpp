#include "platform/simulation/daemon/supervisor.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/channel_socket.h"
#include "platform/simulation/daemon/worker.h"
#include "platform/simulation/debug_state.h"

namespace
{

constexpr char kPidFile[] = "/tmp/cwWtpd.pid";

constexpr int kEnders[] = {SIGTERM, SIGINT, SIGHUP};
constexpr int kFaults[] = {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGILL};

constexpr timespec kRestartDelay = {0, 250'000'000};

class Supervisor
{
public:
    explicit Supervisor(int lock) : lock_(lock) {}

    int run();

private:
    [[nodiscard]] bool startWorker();
    [[noreturn]] void becomeWorker(pid_t supervisor) const;
    void endWorker();
    /// Whether the worker has ended.
    bool reapWorker();
    [[nodiscard]] bool writePidFile() const;

    int lock_;
    pid_t worker_ = -1;
    sigset_t awaited_{};
    sigset_t enders_{};
    sigset_t previous_{};
};

int Supervisor::run()
{
    sigemptyset(&enders_);
    for (const int signal : kEnders) {
        // A shell has its background ignore Ctrl-C, which is meant for the foreground: that stands.
        struct sigaction inherited;
        if (sigaction(signal, nullptr, &inherited) == 0 && (signal == SIGTERM || inherited.sa_handler != SIG_IGN))
            sigaddset(&enders_, signal);
    }
    awaited_ = enders_;
    sigaddset(&awaited_, SIGCHLD);
    std::signal(SIGCHLD, SIG_DFL);
    sigprocmask(SIG_BLOCK, &awaited_, &previous_);

    bool isDone = !startWorker();
    const int status = isDone ? EXIT_FAILURE : EXIT_SUCCESS;
    while (!isDone) {
        const int signal = sigwaitinfo(&awaited_, nullptr);
        if (signal == SIGCHLD && reapWorker())
            isDone = sigtimedwait(&enders_, nullptr, &kRestartDelay) > 0 || !startWorker();
        else
            isDone = sigismember(&enders_, signal) == 1;
    }
    endWorker();
    unlink(DeviceFile(kPidFile).path());
    unlink(DeviceFile(kChannelSocket).path());
    return status;
}

bool Supervisor::startWorker()
{
    const pid_t supervisor = getpid();
    worker_ = fork();
    if (worker_ == 0)
        becomeWorker(supervisor);
    if (worker_ > 0 && writePidFile())
        return true;
    std::perror("cwWtpd: the worker");
    return false;
}

void Supervisor::becomeWorker(pid_t supervisor) const
{
    close(lock_);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (const int fault : kFaults)
        std::signal(fault, SIG_DFL);
    const rlimit noCoreFile{0, 0};
    setrlimit(RLIMIT_CORE, &noCoreFile);
    sigprocmask(SIG_SETMASK, &previous_, nullptr);
    if (getppid() == supervisor)
        runWorker();
    _exit(EXIT_FAILURE);
}

void Supervisor::endWorker()
{
    if (worker_ <= 0)
        return;
    kill(worker_, SIGKILL);
    waitpid(worker_, nullptr, 0);
    worker_ = -1;
}

bool Supervisor::reapWorker()
{
    int status = 0;
    if (waitpid(worker_, &status, WNOHANG) != worker_)
        return false;
    for (const int fault : kFaults) {
        if (!WIFSIGNALED(status) || WTERMSIG(status) != fault)
            continue;
        char when[32];
        const std::time_t now = std::time(nullptr);
        std::tm utc{};
        std::strftime(when, sizeof when, "%F %T", gmtime_r(&now, &utc));
        char text[96];
        std::snprintf(text, sizeof text, "%s cwWtpd[%d]: %s", when, worker_, sigdescr_np(fault));
        simRecordCrash(text);
    }
    worker_ = -1;
    return true;
}

/// A reader finds a whole number or no file.
bool Supervisor::writePidFile() const
{
    const std::string draft = std::string(kPidFile) + ".new";
    FILE* file = std::fopen(DeviceFile(draft.c_str()).path(), "we");
    if (file == nullptr)
        return false;
    std::fprintf(file, "%d\n", worker_);
    return std::fclose(file) == 0 && std::rename(DeviceFile(draft.c_str()).path(), DeviceFile(kPidFile).path()) == 0;
}

} // namespace

int superviseWorkers(int lock)
{
    return Supervisor(lock).run();
}

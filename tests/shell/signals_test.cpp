#include "shell/signals.h"

#include <csignal>
#include <poll.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

namespace
{

void receive(const HeldSignals& signals)
{
    constexpr timespec kNow{};
    ppoll(nullptr, 0, &kNow, &signals.outside());
}

} // namespace

TEST(Signals, OneThatAThreadGetsWaitsForTheSession)
{
    catchSignals();
    const HeldSignals signals;
    std::thread thread([&signals] {
        pthread_sigmask(SIG_SETMASK, &signals.outside(), nullptr);
        pthread_kill(pthread_self(), SIGINT);
    });
    thread.join();
    EXPECT_FALSE(isInterrupted());
    receive(signals);
    EXPECT_TRUE(isInterrupted());
}

TEST(Signals, AProcessThatWasContinuedDoesNotStopAgain)
{
    const pid_t child = fork();
    if (child == 0) {
        setpgid(0, 0); // a group that is not orphaned, because SIGTSTP does not stop an orphaned process group
        catchSignals();
        HeldSignals signals;
        raise(SIGTSTP);
        receive(signals);
        raise(SIGCONT);
        signals.stop();
        _exit(takeSignal(SIGTSTP) && takeSignal(SIGCONT) ? 7 : 1);
    }
    int status = 0;
    waitpid(child, &status, WUNTRACED);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 7);
    if (WIFSTOPPED(status))
        kill(child, SIGKILL);
}

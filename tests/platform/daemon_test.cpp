#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/daemon_records.h"
#include "platform/debug_library.h"
#include "platform/message_channel.h"
#include "platform/simulation/channel_socket.h"
#include "platform/simulation/state.h"
#include "tests/support/device.h"

namespace
{

using Clock = std::chrono::steady_clock;

constexpr char kPidFile[] = "/tmp/cwWtpd.pid";
constexpr char kSocket[] = "/tmp/cwWtpd.sock";

bool comesTrue(const std::function<bool()>& condition)
{
    const Clock::time_point end = Clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (Clock::now() > end)
            return false;
        usleep(10'000);
    }
    return true;
}

pid_t spawnDaemon(const std::string& output)
{
    const pid_t pid = fork();
    if (pid != 0)
        return pid;
    const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
    dup2(file, STDOUT_FILENO); // a worker that stays does not hold up whoever reads the test's output
    dup2(file, STDERR_FILENO);
    execl(CWWTPD, "cwWtpd", nullptr);
    _exit(127);
}

int exitStatusOf(pid_t pid)
{
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

class DaemonTest : public DeviceTest
{
protected:
    void TearDown() override { stop(); }

    void start()
    {
        daemon_ = spawnDaemon(path("/tmp/daemon_output"));
        ASSERT_TRUE(comesTrue([] { return answers(); })) << readFile("/tmp/daemon_output");
    }
    int stop(int signal = SIGTERM)
    {
        if (daemon_ < 0)
            return 0;
        kill(daemon_, signal);
        return exitStatusOf(std::exchange(daemon_, -1));
    }

    static bool answers(int type = kQueryRadios)
    {
        static std::array<char, 65536> reply;
        int length = static_cast<int>(reply.size());
        return ipcmsg_send_and_recv(1, 0, type, "\0\0", 2, reply.data(), &length, 5000) == 0;
    }
    [[nodiscard]] pid_t worker() const { return std::atoi(readFile(kPidFile).c_str()); }

    pid_t daemon_ = -1;
};

TEST_F(DaemonTest, EndedWorkerIsReplacedAndACrashRecorded)
{
    start();
    const pid_t first = worker();
    simWriteText("daemon/behaviour", "crash");
    EXPECT_FALSE(answers(kQueryAccessPoint));
    simWriteText("daemon/behaviour", "normal");
    EXPECT_TRUE(comesTrue([&] { return worker() != first && answers(); }));
    char text[101] = "";
    EXPECT_GE(read_crash(0, text, sizeof text), 0);
    EXPECT_NE(std::string(text).find("cwWtpd[" + std::to_string(first) + "]: Segmentation fault\n"), std::string::npos)
        << text;

    const pid_t second = worker();
    const Clock::time_point told = Clock::now();
    kill(second, SIGTERM);
    EXPECT_TRUE(comesTrue([&] { return worker() != second && answers(); }));
    EXPECT_LT(Clock::now() - told, std::chrono::seconds(3));
    read_crash_reset();
    EXPECT_LT(read_crash(1, text, sizeof text), 0) << "told to end is no crash";
}

TEST_F(DaemonTest, EverySignalToEndCleansUp)
{
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        start();
        const pid_t last = worker();
        EXPECT_EQ(stop(signal), 0) << signal;
        EXPECT_NE(kill(last, 0), 0);
        EXPECT_FALSE(exists(kPidFile));
        EXPECT_FALSE(exists(kSocket));
    }
}

TEST_F(DaemonTest, EndsWithItsParent)
{
    const pid_t parent = fork();
    if (parent == 0) {
        spawnDaemon(path("/tmp/daemon_output"));
        pause();
    }
    ASSERT_TRUE(comesTrue([] { return answers(); }));
    const pid_t last = worker();
    kill(parent, SIGKILL);
    waitpid(parent, nullptr, 0);
    EXPECT_TRUE(comesTrue([&] { return kill(last, 0) != 0 && !exists(kPidFile) && !exists(kSocket); }));
}

TEST_F(DaemonTest, WorkerEndsWithItsSupervisor)
{
    start();
    EXPECT_EQ(stop(SIGKILL), -SIGKILL);
    EXPECT_TRUE(comesTrue([] { return !answers(); }));
    start();
}

TEST_F(DaemonTest, OneForEachDevice)
{
    start();
    EXPECT_EQ(exitStatusOf(spawnDaemon(path("/tmp/second_output"))), 1);
    EXPECT_NE(readFile("/tmp/second_output").find("already running"), std::string::npos);
    EXPECT_TRUE(answers());
}

TEST_F(DaemonTest, BadMessagesHoldUpNobody)
{
    start();
    const pid_t first = worker();
    std::vector<int> clients;
    for (const std::size_t length : {0U, 3U, 12U, 100'000U}) {
        clients.push_back(openChannelSocket(connect));
        const std::string noise(length, '\x63');
        if (length != 0) {
            EXPECT_EQ(send(clients.back(), noise.data(), length, 0), static_cast<ssize_t>(length));
        }
    }
    EXPECT_FALSE(answers(4));
    EXPECT_EQ(ipcmsg_send(1, 0, kSetPower, "\0\1\36", 3), 0) << "a byte is missing";
    EXPECT_EQ(ipcmsg_send(1, 0, kSetCountry, "\0\0\x88\1US\0\0", 8), 0) << "the number is another country's";
    EXPECT_TRUE(answers());
    EXPECT_FALSE(exists("/sim/daemon/power0") || exists("/sim/daemon/country"));
    EXPECT_EQ(worker(), first);
    for (const int client : clients)
        close(client);
    EXPECT_TRUE(answers());
}

} // namespace

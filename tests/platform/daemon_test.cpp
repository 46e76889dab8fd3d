#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

#include "diag/reply.h"
#include "platform/daemon_records.h"
#include "platform/debug_library.h"
#include "platform/message_channel.h"
#include "platform/simulation/channel_socket.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"
#include "tests/support/device.h"

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

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

/// Leaves its output in the device file "/tmp/daemon_output".
pid_t spawnDaemon(const std::string& output)
{
    const pid_t pid = fork();
    if (pid != 0)
        return pid;
    const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, S_IRUSR | S_IWUSR);
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
    DaemonTest()
    {
        for (const char* interface : simInterfaces())
            simSetInterfaceNumber(interface, "up", 1);
    }
    ~DaemonTest() override { stop(); }
    DaemonTest(const DaemonTest&) = delete;
    DaemonTest& operator=(const DaemonTest&) = delete;

    void start()
    {
        daemon_ = spawnDaemon(path("/tmp/daemon_output"));
        ASSERT_TRUE(comesTrue([this] { return answers(); })) << readFile("/tmp/daemon_output");
    }
    int stop(int signal = SIGTERM)
    {
        if (daemon_ < 0)
            return 0;
        kill(daemon_, signal);
        return exitStatusOf(std::exchange(daemon_, -1));
    }

    int query(int type, int timeoutMs = 5000)
    {
        reply_.fill(0);
        length_ = static_cast<int>(reply_.size());
        return ipcmsg_send_and_recv(1, 0, type, "\0\0", 2, reply_.data(), &length_, timeoutMs);
    }
    bool answers() { return query(kQueryRadios) == 0; }
    [[nodiscard]] pid_t worker() const { return std::atoi(readFile(kPidFile).c_str()); }

    [[nodiscard]] RadioRecord radio(std::size_t index) const
    {
        return recordAt<RadioRecord>(reply_, index * sizeof(RadioRecord));
    }
    template <typename Record>
    [[nodiscard]] Record listed(std::size_t index) const
    {
        return recordAt<Record>(reply_, ReplyList::kHeadLength + index * sizeof(Record));
    }
    [[nodiscard]] unsigned count() const { return reply_[2] * 256U + reply_[3]; }

    /// Transmit power that a radio reports after this message.
    unsigned powerAfter(std::initializer_list<uint8_t> message, unsigned index)
    {
        EXPECT_EQ(ipcmsg_send(1, 0, kSetPower, message.begin(), static_cast<int>(message.size())), 0);
        EXPECT_EQ(query(kQueryRadios), 0);
        return radio(index).txPower;
    }

    pid_t daemon_ = -1;
    std::array<uint8_t, 65536> reply_{};
    int length_ = 0;
};

TEST_F(DaemonTest, TerminatedWorkerIsReplaced)
{
    start();
    const pid_t first = worker();
    ASSERT_EQ(kill(first, SIGTERM), 0);
    const Clock::time_point ended = Clock::now();
    EXPECT_TRUE(comesTrue([&] { return worker() != first && answers(); }));
    EXPECT_LT(Clock::now() - ended, std::chrono::seconds(3));
}

TEST_F(DaemonTest, CrashedWorkerIsReplacedAndRecorded)
{
    start();
    const pid_t first = worker();
    simWriteText("daemon/behaviour", "crash");
    EXPECT_NE(query(kQueryAccessPoint), 0);
    simWriteText("daemon/behaviour", "normal");
    EXPECT_TRUE(comesTrue([&] { return worker() != first && answers(); }));
    char text[101] = "";
    EXPECT_GE(read_crash(0, text, sizeof text), 0);
    EXPECT_NE(std::string(text).find("cwWtpd[" + std::to_string(first) + "]: Segmentation fault\n"), std::string::npos)
        << text;

    const pid_t second = worker();
    kill(second, SIGTERM);
    EXPECT_TRUE(comesTrue([&] { return worker() != second && answers(); }));
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
        const std::string output = path("/tmp/daemon_output");
        spawnDaemon(output);
        pause();
    }
    ASSERT_TRUE(comesTrue([this] { return answers(); }));
    const pid_t last = worker();
    kill(parent, SIGKILL);
    waitpid(parent, nullptr, 0);
    EXPECT_TRUE(comesTrue([&] { return kill(last, 0) != 0 && !exists(kPidFile) && !exists(kSocket); }));
}

TEST_F(DaemonTest, WorkerEndsWithItsSupervisor)
{
    start();
    EXPECT_EQ(stop(SIGKILL), -SIGKILL);
    EXPECT_TRUE(comesTrue([this] { return !answers(); }));
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
    EXPECT_NE(query(4), 0);
    EXPECT_TRUE(answers());
    EXPECT_EQ(worker(), first);
    for (const int client : clients)
        close(client);
    EXPECT_TRUE(answers());
}

} // namespace

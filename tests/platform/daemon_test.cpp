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

TEST_F(DaemonTest, PowerIsAppliedWithinWhatTheRadioCanDo)
{
    start();
    EXPECT_EQ(powerAfter({0, 1, 50, 0}, 0), 50U);
    EXPECT_EQ(powerAfter({1, 0, 9, 0}, 1), 50U) << "9 of 18 dBm";
    EXPECT_EQ(powerAfter({0, 1, 0x2c, 0x01}, 0), 100U);
    EXPECT_EQ(powerAfter({1, 0, 99, 0}, 1), 100U);
    EXPECT_EQ(powerAfter({0, 0, 0xfb, 0xff}, 0), 0U) << "-5 dBm";
    EXPECT_EQ(powerAfter({2, 1, 30, 0}, 0), 0U) << "no such radio";
    EXPECT_EQ(powerAfter({0, 1, 30}, 0), 0U) << "a short message";

    const pid_t first = worker();
    kill(first, SIGTERM);
    ASSERT_TRUE(comesTrue([&] { return worker() != first && answers(); }));
    EXPECT_EQ(radio(0).txPower, 0U) << "a restart keeps it";
}

TEST_F(DaemonTest, CountryIsAppliedWhenNumberAndLettersAgree)
{
    start();
    const auto countriesAfter = [this](std::initializer_list<uint8_t> message) {
        EXPECT_EQ(ipcmsg_send(1, 0, kSetCountry, message.begin(), static_cast<int>(message.size())), 0);
        EXPECT_EQ(query(kQueryRadios), 0);
        const RadioRecord radios[] = {radio(0), radio(1)};
        return std::string(radios[0].configuredCountry) + radios[0].operatingCountry + radios[1].configuredCountry +
               radios[1].operatingCountry;
    };
    EXPECT_EQ(countriesAfter({0, 0xff, 0x88, 0x01, 'J', 'P', 0, 0}), "JPJPJPJP");
    EXPECT_EQ(radio(0).hardwareChannels[1] & 0x40U, 0x40U) << "the hardware's channel 14";
    EXPECT_EQ(radio(0).allowedChannels[1] & 0x40U, 0x40U) << "allowed there";
    EXPECT_EQ(countriesAfter({0, 0, 0x88, 0x01, 'U', 'S', 0, 0}), "JPJPJPJP");
    EXPECT_EQ(countriesAfter({0, 0, 0x4a, 0x03, 'U', 'S', 0}), "JPJPJPJP") << "a short message";
    EXPECT_EQ(countriesAfter({0, 0, 0x4a, 0x03, 'U', 'S', 0, 0}), "USUSUSUS");
    EXPECT_EQ(radio(0).allowedChannels[1] & 0x40U, 0U);
}

TEST_F(DaemonTest, InterfacesThatAreDownShow)
{
    simWriteNumber("daemon/vaps", 8);
    simSetInterfaceNumber("wlan0", "up", 0);
    simSetInterfaceNumber("wlan1-va0", "up", 0);
    start();
    EXPECT_EQ(radio(0).mode, RadioRecord::kDisabled) << "radio 0 is disabled";
    EXPECT_NE(radio(1).mode, RadioRecord::kDisabled);

    ASSERT_EQ(query(kQueryVaps), 0);
    ASSERT_EQ(count(), 8U);
    ASSERT_EQ(length_, 22180);
    for (std::size_t i = 0; i < count(); ++i) {
        const auto vap = listed<VapRecord>(i);
        const std::string interface = vap.interface;
        EXPECT_EQ(vap.adminDown != 0, interface == "wlan1-va0") << interface;
        EXPECT_EQ(vap.interfaceDown != 0, interface == "wlan1-va0" || interface.starts_with("wlan0")) << interface;
    }

    ASSERT_EQ(query(kQueryStations), 0);
    ASSERT_GT(count(), 0U);
    for (std::size_t i = 0; i < count(); ++i) {
        EXPECT_EQ(listed<StationRecord>(i).radio, 1U);
        EXPECT_NE(listed<StationRecord>(i).vap, 0U);
    }
}

TEST_F(DaemonTest, WorldIsAsLargeAsItsStateSays)
{
    start();
    for (const unsigned stations : {0U, 1U, 511U}) {
        simWriteNumber("daemon/stations", static_cast<int>(stations));
        ASSERT_EQ(query(kQueryStations), 0);
        EXPECT_EQ(count(), stations);
        EXPECT_EQ(length_, static_cast<int>(4 + stations * sizeof(StationRecord)));
    }
    simWriteNumber("daemon/vaps", 0);
    ASSERT_EQ(query(kQueryVaps), 0);
    EXPECT_EQ(length_, 4);
    ASSERT_EQ(query(kQueryStations), 0);
    EXPECT_EQ(count(), 0U) << "stations without a VAP";
}

TEST_F(DaemonTest, BehavesAsItsStateSays)
{
    start();
    const auto behaves = [this](const char* text, int timeoutMs = 5000) {
        simWriteText("daemon/behaviour", text);
        const Clock::time_point asked = Clock::now();
        const bool hasAnswered = query(kQueryRadios, timeoutMs) == 0;
        return std::pair(hasAnswered, Clock::now() - asked);
    };
    EXPECT_FALSE(behaves("silent", 200).first);
    EXPECT_TRUE(behaves("normal").first) << "a silent spell holds up nobody else";
    EXPECT_GE(behaves("slow 1").second, milliseconds(1000));
    EXPECT_EQ(length_, 2 * static_cast<int>(sizeof(RadioRecord)));
    EXPECT_TRUE(behaves("short 3000").first);
    EXPECT_EQ(length_, 3000);
    EXPECT_TRUE(behaves("long").first);
    EXPECT_EQ(length_, 65536);
    EXPECT_EQ(reply_.back(), 0xffU);
    EXPECT_TRUE(behaves("random 7").first);
    const std::array<uint8_t, 65536> noise = reply_;
    EXPECT_TRUE(behaves("random 7").first);
    EXPECT_EQ(reply_, noise);
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

TEST_F(DaemonTest, LogsWhatIsSwitchedOn)
{
    start();
    EXPECT_EQ(readFile("/sim/debug_log"), "");
    attach_udebug();
    const int app = appname2id("cwWtpd");
    udbg_info[app] = uint64_t{1} << submod_name2id(app, "ipc");
    EXPECT_TRUE(answers());
    EXPECT_NE(readFile("/sim/debug_log").find("cwWtpd/ipc: query 5, 4128 bytes, normal\n"), std::string::npos)
        << readFile("/sim/debug_log");
}

TEST_F(DaemonTest, LinkComesUpAsConfigured)
{
    writeFile("/cfg/sys.conf", "#SYS\nhostname=lobby-ap\n");
    writeFile("/cfg/cw.conf", "#CW\necho-interval=17\nac-ctl-port=6000\nap-mgmt-vlanid=12\naddr-mode=static\n"
                              "static-ip-addr=10.1.2.3\nac-ip-addr=10.0.0.1 1\nac-ip-addr=10.0.0.2 1\n"
                              "data-channel-sec=dtls,ipsec\n");
    start();
    ASSERT_EQ(query(kQueryAccessPoint), 0);
    EXPECT_EQ(length_, 2992);
    auto info = recordAt<ApInfo>(reply_, 0);
    EXPECT_STRNE(info.state, "RUN") << "a link takes a moment";
    ASSERT_TRUE(comesTrue([&] {
        EXPECT_EQ(query(kQueryAccessPoint), 0);
        info = recordAt<ApInfo>(reply_, 0);
        EXPECT_EQ(info.connectTime != 0, std::string(info.state) == "RUN") << info.state;
        return info.connectTime != 0;
    }));
    EXPECT_EQ(uint16_t{info.echoInterval}, 17U);
    EXPECT_EQ(uint16_t{info.managementVlan}, 12U);
    EXPECT_STREQ(info.name, "lobby-ap");
    EXPECT_EQ(uint32_t{info.apAddress}, 0x0a010203U);
    EXPECT_EQ(uint32_t{info.acAddress}, 0x0a000001U);
    EXPECT_EQ(uint16_t{info.acPorts[0]}, 6000U);
    EXPECT_NE(info.dataSecurity & ApInfo::kDtlsDetails, 0);
}

} // namespace

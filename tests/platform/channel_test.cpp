#include "platform/message_channel.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <poll.h>
#include <string>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/simulation/channel_socket.h"
#include "tests/support/device.h"

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

volatile sig_atomic_t signalsSeen;

void countSignal(int)
{
    signalsSeen = signalsSeen + 1;
}

/// A daemon for one connection, in a process of its own.
class Peer
{
public:
    explicit Peer(const std::function<void(int connection, const std::string& packet)>& serve)
    {
        const int listener = openChannelSocket(bind);
        listen(listener, 1);
        pid_ = fork();
        if (pid_ == 0) {
            pollfd incoming{listener, POLLIN, 0};
            poll(&incoming, 1, -1);
            const int connection = accept(listener, nullptr, nullptr);
            char packet[512];
            const ssize_t length = recv(connection, packet, sizeof packet, 0);
            serve(connection, std::string(packet, length > 0 ? static_cast<std::size_t>(length) : 0));
            _exit(0);
        }
        close(listener);
    }
    ~Peer()
    {
        kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

private:
    pid_t pid_ = -1;
};

std::string packet(int type, const std::string& body)
{
    const ChannelHeader header{kDaemonAddress, 0, type};
    return std::string(reinterpret_cast<const char*>(&header), sizeof header) + body;
}

void answer(int connection, const std::string& text)
{
    send(connection, text.data(), text.size(), 0);
}

class ChannelTest : public DeviceTest
{
protected:
    /// A query of type 2 whose body is "ab".
    int query(int timeoutMs)
    {
        const Clock::time_point start = Clock::now();
        reply_.fill('#');
        length_ = kCapacity;
        const int result = ipcmsg_send_and_recv(1, 0, 2, "ab", 2, reply_.data(), &length_, timeoutMs);
        elapsed_ = std::chrono::duration_cast<milliseconds>(Clock::now() - start);
        return result;
    }

    static constexpr int kCapacity = 8;
    std::array<char, kCapacity + 8> reply_{};
    int length_ = 0;
    milliseconds elapsed_{};
};

TEST_F(ChannelTest, ReplyReachesTheCallerCutAtTheCapacity)
{
    // A device root may be longer than a socket address.
    const std::string root = path("/" + std::string(120, 'r'));
    std::filesystem::create_directories(root + "/tmp");
    setenv("CLI_SIM_ROOT", root.c_str(), 1);
    for (const auto& [type, reply] :
         {std::pair{2, std::string("yes")}, {2, "yesyesyesyes"}, {2, ""}, {3, "of another query"}}) {
        const std::string right = packet(type, reply), wrong = packet(type, "no");
        const Peer peer([&](int connection, const std::string& asked) {
            answer(connection, asked == packet(2, "ab") ? right : wrong);
        });
        EXPECT_NE(ipcmsg_send(2, 0, 7, "abcd", 4), 0) << "only the daemon's address is served";
        EXPECT_EQ(query(5000) == 0, type == 2);
        EXPECT_EQ(std::string(reply_.data(), static_cast<std::size_t>(length_)),
                  type == 2 ? reply.substr(0, kCapacity) : "");
        EXPECT_EQ(reply_[kCapacity], '#');
        std::filesystem::remove(root + kChannelSocket);
    }
}

TEST_F(ChannelTest, TimeOutHoldsWhateverSignalsArrive)
{
    const Peer peer([](int, const std::string&) { pause(); });
    std::signal(SIGALRM, countSignal);
    const itimerval often{{0, 20'000}, {0, 20'000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_NE(query(300), 0);
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_GE(elapsed_, milliseconds(300));
    EXPECT_LT(elapsed_, milliseconds(2500));
    EXPECT_GT(signalsSeen, 3);
}

TEST_F(ChannelTest, AnInterruptEndsTheWaitUnlessItIsIgnored)
{
    signalsSeen = 0;
    for (const bool isIgnored : {false, true}) {
        std::signal(SIGINT, isIgnored ? SIG_IGN : countSignal);
        const Peer peer([](int connection, const std::string&) {
            kill(getppid(), SIGINT);
            usleep(50'000);
            answer(connection, packet(2, "yes"));
        });
        EXPECT_EQ(query(5000) == 0, isIgnored);
        EXPECT_EQ(signalsSeen, 1);
        std::filesystem::remove(path(kChannelSocket));
    }
}

} // namespace

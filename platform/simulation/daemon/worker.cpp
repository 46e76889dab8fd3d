#include "platform/simulation/daemon/worker.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <unistd.h>

#include "platform/device_file.h"
#include "platform/simulation/channel_socket.h"
#include "platform/simulation/daemon/addresses.h"
#include "platform/simulation/daemon/ap_info.h"
#include "platform/simulation/daemon/applied_settings.h"
#include "platform/simulation/daemon/debug_line.h"
#include "platform/simulation/daemon/network.h"
#include "platform/simulation/daemon/traffic.h"
#include "platform/simulation/daemon/vap_info.h"
#include "platform/simulation/interface_state.h"
#include "platform/simulation/state.h"

namespace
{

using Clock = std::chrono::steady_clock;

constexpr std::size_t kLongestMessage = 4096;
constexpr std::size_t kMostClients = 64;

/// The intervals at which the link is checked, before it runs and while it runs.
constexpr int kLinkPollMs = 100;
constexpr int kRunningPollMs = 1000;

/// For a state of the link: the submodule that writes a debug line, and the line.
constexpr const char* kWork[][3] = {
    {"DISCOVERY", "discovery", "request sent"},          {"SULKING", "timer", "silent until the next discovery"},
    {"DTLS_SETUP", "dtls", "handshake begun"},           {"JOIN", "join", "request sent"},
    {"CONFIGURE", "configure", "status sent"},           {"DATA_CHECK", "echo", "data channel checked"},
    {"RUN", "run", "networks set up by the controller"},
};

/// The state file "daemon/behaviour": a word, and for "slow" a number.
struct Behaviour {
    Behaviour()
    {
        char line[32];
        simReadText("daemon/behaviour", line, sizeof line, "normal");
        std::sscanf(line, "%15s %u", word, &seconds);
    }

    char word[16]{};
    unsigned seconds = 3;
};

/// The time at which a reply is sent; none: it is never sent.
std::optional<Clock::time_point> dueTime(const Behaviour& behaviour)
{
    const std::string_view word = behaviour.word;
    if (word == "silent")
        return std::nullopt;
    return Clock::now() + std::chrono::seconds(word == "slow" ? behaviour.seconds : 0);
}

class Worker
{
public:
    explicit Worker(int listener, const WtpConfig& config) : listener_(listener), config_(config), link_(config) {}

    [[noreturn]] void run()
    {
        for (;;) {
            wait();
            sendDueReplies();
            dropFinished();
        }
    }

private:
    /// A connection. It sends one message. The reply, if there is one, is sent when it is due.
    struct Client {
        int descriptor;
        bool hasAsked = false;
        bool isDone = false;
        Bytes reply{};
        std::optional<Clock::time_point> due{};
    };

    /// Waits for a message, a closed connection, or the time of a reply. Brings the state of the link up to date, and
    /// then receives the messages in the order of the connections.
    void wait()
    {
        int timeout = link_.status().runs() ? kRunningPollMs : kLinkPollMs;
        std::vector<pollfd> watched = {{clients_.size() < kMostClients ? listener_ : -1, POLLIN, 0}};
        for (const Client& client : clients_) {
            watched.push_back({client.descriptor, POLLIN, 0});
            if (client.due) {
                const auto left = std::chrono::ceil<std::chrono::milliseconds>(*client.due - Clock::now());
                const int leftMs = std::max(0, static_cast<int>(left.count()));
                timeout = std::min(timeout, leftMs);
            }
        }
        const int ready = poll(watched.data(), watched.size(), timeout);
        followLink();
        if (ready <= 0)
            return;
        for (std::size_t i = 0; i < clients_.size(); ++i)
            if (watched[i + 1].revents != 0)
                receive(clients_[i]);
        if (watched[0].revents != 0)
            acceptClients();
    }

    void followLink()
    {
        link_.follow();
        const ControllerLink::Status status = link_.status();
        const auto passed = std::chrono::floor<std::chrono::seconds>(Clock::now() - counted_);
        counted_ += passed;
        if (passed.count() != 0)
            countTraffic(static_cast<uint64_t>(passed.count()), status.runs());
        for (const Network& network : networks()) {
            const std::string interface = network.interface();
            const int serves = network.serves(status.runs());
            if (simInterfaceNumber(interface.c_str(), "served") != serves)
                simSetInterfaceNumber(interface.c_str(), "served", serves);
        }
        if (linkState_ == status.state)
            return;
        debugLine("fsm", "%s -> %s", linkState_.empty() ? "START" : linkState_.c_str(), status.state);
        for (const auto& [state, module, text] : kWork)
            if (state == std::string_view(status.state))
                debugLine(module, "%s", text);
        if (status.state == std::string_view("DATA_CHECK"))
            debugLine("dtls-data", "options %s", config_.text("data-channel-sec").c_str());
        if (status.runs())
            tunnelDebugLine("session", "opened to the controller");
        linkState_ = status.state;
    }

    void acceptClients()
    {
        while (clients_.size() < kMostClients) {
            const int descriptor = accept4(listener_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
            if (descriptor < 0)
                return;
            clients_.push_back({descriptor});
        }
    }

    void receive(Client& client)
    {
        std::array<uint8_t, kLongestMessage> packet;
        const ssize_t length = recv(client.descriptor, packet.data(), packet.size(), 0);
        ChannelHeader header;
        if (client.hasAsked || length < static_cast<ssize_t>(sizeof header)) {
            client.isDone = true;
            return;
        }
        client.hasAsked = true;
        std::memcpy(&header, packet.data(), sizeof header);
        handle(client, header,
               std::span(packet).subspan(sizeof header, static_cast<std::size_t>(length) - sizeof header));
    }

    void handle(Client& client, const ChannelHeader& header, std::span<const uint8_t> body)
    {
        std::optional<Bytes> reply;
        switch (header.type) {
        case kSetCountry:
            debugLine("country", "message %s", applyCountry(body) ? "applied" : "refused");
            break;
        case kSetPower:
            debugLine("power", "message %s", applyPower(body) ? "applied" : "refused");
            break;
        default:
            reply = answer(header.type);
            break;
        }
        if (!reply) {
            client.isDone = true;
            return;
        }
        const Behaviour behaviour;
        if (behaviour.word == std::string_view("crash"))
            std::raise(SIGSEGV);
        const auto* first = reinterpret_cast<const uint8_t*>(&header);
        debugLine("ipc", "query %d, %zu bytes, %s", header.type, reply->size(), behaviour.word);
        client.reply.assign(first, first + sizeof header);
        client.reply.insert(client.reply.end(), reply->begin(), reply->end());
        client.due = dueTime(behaviour);
    }

    std::optional<Bytes> answer(int32_t type) const
    {
        switch (type) {
        case kQueryVaps:
            return vapReply(link_.status().runs());
        case kQueryAccessPoint:
            return accessPointReply(config_, link_.status());
        case kQueryStations:
            return stationReply(link_.status().runs());
        case kQueryRadios:
            return radioReply();
        default:
            return std::nullopt;
        }
    }

    void sendDueReplies()
    {
        for (Client& client : clients_) {
            if (client.isDone || !client.due || *client.due > Clock::now())
                continue;
            send(client.descriptor, client.reply.data(), client.reply.size(), MSG_NOSIGNAL);
            client.isDone = true;
        }
    }

    void dropFinished()
    {
        for (const Client& client : clients_)
            if (client.isDone)
                close(client.descriptor);
        std::erase_if(clients_, [](const Client& client) { return client.isDone; });
    }

    int listener_;
    WtpConfig config_;
    ControllerLink link_;
    Clock::time_point counted_ = Clock::now(); ///< the traffic is counted up to this time
    std::string linkState_;
    std::vector<Client> clients_;
};

} // namespace

void runWorker()
{
    debugLine("main", "worker %d started", getpid());
    const WtpConfig config;
    debugLine("config", "discovery type %d", config.number("discovery-type"));
    takeAddress(config);
    unlink(DeviceFile(kChannelSocket).path());
    const int listener = openChannelSocket(bind);
    if (listener < 0 || listen(listener, SOMAXCONN) != 0)
        return;
    Worker(listener, config).run();
}

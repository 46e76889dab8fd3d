#include "platform/message_channel.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <poll.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/simulation/channel_socket.h"

namespace
{

/// Blocks SIGINT while an object of this class exists. During this time, Ctrl-C makes the file descriptor readable. The
/// handler of SIGINT runs when the object is destroyed.
class InterruptWatch
{
public:
    InterruptWatch()
    {
        struct sigaction action;
        if (sigaction(SIGINT, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
            return;
        sigset_t interrupt;
        sigemptyset(&interrupt);
        sigaddset(&interrupt, SIGINT);
        descriptor_ = signalfd(-1, &interrupt, SFD_CLOEXEC);
        if (descriptor_ >= 0)
            sigprocmask(SIG_BLOCK, &interrupt, &previous_);
    }
    ~InterruptWatch()
    {
        if (descriptor_ < 0)
            return;
        close(descriptor_);
        sigprocmask(SIG_SETMASK, &previous_, nullptr);
    }
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// The caller must not read from the descriptor, so that the signal stays pending. -1 if SIGINT is ignored or there
    /// is no descriptor.
    [[nodiscard]] int descriptor() const { return descriptor_; }

private:
    int descriptor_ = -1;
    sigset_t previous_{};
};

/// A connection to the daemon, or none.
class Channel
{
public:
    explicit Channel(int destination)
    {
        if (destination == kDaemonAddress)
            descriptor_ = openChannelSocket(connect);
    }
    ~Channel()
    {
        if (descriptor_ >= 0)
            close(descriptor_);
    }
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    [[nodiscard]] bool send(const ChannelHeader& header, const void* body, int length) const;
    [[nodiscard]] bool waitForReply(const InterruptWatch& interrupt, int timeoutMs) const;
    /// Reads what fits the buffer and discards the rest.
    [[nodiscard]] bool receive(const ChannelHeader& expected, void* body, int& length) const;

private:
    int descriptor_ = -1;
};

constexpr int64_t kMicrosecondsPerMs = 1000;

int64_t nowMicroseconds()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t{now.tv_sec} * 1'000'000 + now.tv_nsec / 1000;
}

bool Channel::send(const ChannelHeader& header, const void* body, int length) const
{
    if (length < 0)
        return false;
    iovec parts[] = {{const_cast<ChannelHeader*>(&header), sizeof header},
                     {const_cast<void*>(body), static_cast<std::size_t>(length)}};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = 2;
    return sendmsg(descriptor_, &message, MSG_NOSIGNAL) >= 0;
}

bool Channel::waitForReply(const InterruptWatch& interrupt, int timeoutMs) const
{
    const int64_t deadline = nowMicroseconds() + kMicrosecondsPerMs * timeoutMs;
    for (;;) {
        const int64_t left = deadline - nowMicroseconds();
        pollfd watched[] = {{descriptor_, POLLIN, 0}, {interrupt.descriptor(), POLLIN, 0}};
        const int ready = poll(watched, 2, left > 0 ? static_cast<int>(left / kMicrosecondsPerMs + 1) : 0);
        if (ready >= 0 || errno != EINTR)
            return ready > 0 && watched[0].revents != 0;
        if (left <= 0)
            return false;
    }
}

bool Channel::receive(const ChannelHeader& expected, void* body, int& length) const
{
    ChannelHeader header{};
    iovec parts[] = {{&header, sizeof header}, {body, static_cast<std::size_t>(length)}};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = 2;
    const ssize_t received = recvmsg(descriptor_, &message, 0);
    if (received < static_cast<ssize_t>(sizeof header) || header.type != expected.type)
        return false;
    length = static_cast<int>(received - static_cast<ssize_t>(sizeof header));
    return true;
}

} // namespace

void* ipcmsg_alloc(int size)
{
    return size < 0 ? nullptr : std::malloc(static_cast<std::size_t>(size));
}

void ipcmsg_free(void* buffer)
{
    std::free(buffer);
}

int ipcmsg_send_and_recv(int destination, int flags, int type, const void* request, int request_length, void* reply,
                         int* reply_length, int timeout_ms)
{
    const ChannelHeader header{destination, flags, type};
    const InterruptWatch interrupt;
    const Channel channel(destination);
    if (*reply_length >= 0 && channel.send(header, request, request_length) &&
        channel.waitForReply(interrupt, timeout_ms) && channel.receive(header, reply, *reply_length))
        return 0;
    *reply_length = 0;
    return -1;
}

int ipcmsg_send(int destination, int flags, int type, const void* message, int length)
{
    const Channel channel(destination);
    return channel.send({destination, flags, type}, message, length) ? 0 : -1;
}

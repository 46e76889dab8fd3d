#include "diag/exchange.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "platform/message_channel.h"
#include "shell/output.h"

namespace
{

constexpr int kDaemon = 1;
constexpr int kTimeoutMs = 10000;

std::uint8_t* allocateZeroed(int size)
{
    auto* buffer = static_cast<std::uint8_t*>(ipcmsg_alloc(size));
    if (buffer != nullptr)
        std::memset(buffer, 0, static_cast<std::size_t>(size));
    return buffer;
}

void release(void* buffer)
{
    if (buffer != nullptr)
        ipcmsg_free(buffer);
}

/// Owns the channel's buffers for one exchange. Sets both buffers to zero first, so that uninitialised memory is never
/// sent or printed.
class Exchange
{
public:
    /// `capacity`: size of the reply buffer; 0 if no reply is expected.
    Exchange(std::span<const std::uint8_t> request, int capacity)
        : requestLength_(static_cast<int>(request.size())), replyLength_(capacity),
          request_(allocateZeroed(requestLength_)),
          reply_(request_ != nullptr && capacity > 0 ? allocateZeroed(capacity) : nullptr)
    {
        if (request_ != nullptr)
            std::copy(request.begin(), request.end(), request_);
    }
    ~Exchange()
    {
        release(request_);
        release(reply_);
    }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    [[nodiscard]] bool ready() const { return request_ != nullptr && (replyLength_ == 0 || reply_ != nullptr); }

    [[nodiscard]] bool send(int type) const { return ipcmsg_send(kDaemon, 0, type, request_, requestLength_) == 0; }

    /// Returns whether a reply was received. Limits the received length to the size of the buffer.
    bool ask(int type)
    {
        const int capacity = replyLength_;
        const int result =
            ipcmsg_send_and_recv(kDaemon, 0, type, request_, requestLength_, reply_, &replyLength_, kTimeoutMs);
        replyLength_ = std::clamp(replyLength_, 0, capacity);
        return result == 0;
    }

    [[nodiscard]] std::span<const std::uint8_t> reply() const
    {
        return {reply_, static_cast<std::size_t>(replyLength_)};
    }

private:
    int requestLength_;
    int replyLength_;
    std::uint8_t* request_;
    std::uint8_t* reply_;
};

} // namespace

int queryDaemon(const StatusQuery& query, std::span<const std::uint8_t, kQueryRequestLength> request)
{
    Exchange exchange(request, query.capacity);
    if (!exchange.ready())
        return -1;
    if (!exchange.ask(query.type) && query.noAnswer != nullptr) {
        cli_print(query.noAnswer);
        return 0;
    }
    const GatheredOutput gathered;
    query.print(exchange.reply());
    return 0;
}

int sendToDaemon(int type, std::span<const std::uint8_t> message)
{
    const Exchange exchange(message, 0);
    if (!exchange.ready())
        return -1;
    if (!exchange.send(type))
        cli_print(kSystemIsBusy);
    return 0;
}

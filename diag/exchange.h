// Exchanges with the CAPWAP daemon over the message channel.

#ifndef DIAG_EXCHANGE_H
#define DIAG_EXCHANGE_H

#include <cstdint>
#include <span>

/// Said where the daemon cannot be asked.
inline constexpr char kSystemIsBusy[] = "System is busy, please try again.\n";

/// Shows a reply. `reply` holds the bytes that were received, no more.
using ReplyPrinter = void (*)(std::span<const std::uint8_t> reply);

/// One question to the daemon.
struct StatusQuery {
    int type;             ///< message type
    int capacity;         ///< longest reply, bytes
    const char* noAnswer; ///< what to say when there is no answer; null: the reply is shown as it stands, zeroed
    ReplyPrinter print;
};

/// Length of a query's request, bytes.
inline constexpr int kQueryRequestLength = 2;

/// Asks the daemon and shows the answer, waiting at most ten seconds. 0, or -1 without a word when the channel has no
/// buffers.
int queryDaemon(const StatusQuery& query, std::span<const std::uint8_t, kQueryRequestLength> request);

/// Sends one message that is not answered, and says so when it could not be sent. 0, or -1 without a word when the
/// channel has no buffer.
int sendToDaemon(int type, std::span<const std::uint8_t> message);

#endif

// Exchanges with the CAPWAP daemon over the message channel.

#ifndef DIAG_EXCHANGE_H
#define DIAG_EXCHANGE_H

#include <cstdint>
#include <span>

/// Printed if the daemon cannot be asked.
inline constexpr char kSystemIsBusy[] = "System is busy, please try again.\n";

/// Prints a reply. `reply` holds only the bytes that were received.
using ReplyPrinter = void (*)(std::span<const std::uint8_t> reply);

/// One question to the daemon.
struct StatusQuery {
    int type;             ///< message type
    int capacity;         ///< longest reply, bytes
    const char* noAnswer; ///< printed if there is no answer; null: a reply of zeros is printed
    ReplyPrinter print;
};

/// Length of a query's request, bytes.
inline constexpr int kQueryRequestLength = 2;

/// Sends a query to the daemon, waits at most ten seconds for the answer, and prints it. Returns 0, also if there is no
/// answer; or -1 without a message if the channel has no buffers.
int queryDaemon(const StatusQuery& query, std::span<const std::uint8_t, kQueryRequestLength> request);

/// Sends a message that has no answer. Prints a message if it cannot be sent. Returns 0, or -1 without a message if the
/// channel has no buffer.
int sendToDaemon(int type, std::span<const std::uint8_t> message);

#endif

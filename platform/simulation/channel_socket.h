// The socket between the shell and the simulated CAPWAP daemon. A connection carries one message, and one reply if the
// message is a query. Each is one packet that begins with a ChannelHeader.

#ifndef PLATFORM_SIMULATION_CHANNEL_SOCKET_H
#define PLATFORM_SIMULATION_CHANNEL_SOCKET_H

#include <cstdint>
#include <sys/socket.h>

inline constexpr char kChannelSocket[] = "/tmp/cwWtpd.sock";

/// Channel address of the CAPWAP daemon.
inline constexpr int kDaemonAddress = 1;

/// The header of a message. A reply has the header of its query.
struct ChannelHeader {
    int32_t destination;
    int32_t flags;
    int32_t type;
};

/// Creates a non-blocking packet socket and calls `attach`, which is connect() or bind(), with the address of
/// kChannelSocket. Returns the socket, which the caller closes, or -1 if that fails.
int openChannelSocket(int (*attach)(int, const sockaddr*, socklen_t));

#endif

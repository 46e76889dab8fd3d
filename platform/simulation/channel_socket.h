// The socket between the shell and the simulated CAPWAP daemon. A connection carries one message and, where the message
// is a query, one reply; both begin with a ChannelHeader and are single packets.

#ifndef PLATFORM_SIMULATION_CHANNEL_SOCKET_H
#define PLATFORM_SIMULATION_CHANNEL_SOCKET_H

#include <cstdint>
#include <sys/socket.h>

inline constexpr char kChannelSocket[] = "/tmp/cwWtpd.sock";

/// Channel address of the CAPWAP daemon.
inline constexpr int kDaemonAddress = 1;

/// A reply repeats the header of its query.
struct ChannelHeader {
    int32_t destination;
    int32_t flags;
    int32_t type;
};

/// A non-blocking packet socket attached to kChannelSocket by `attach`, which is connect() or bind(). The caller closes
/// it. -1: cannot be attached.
int openChannelSocket(int (*attach)(int, const sockaddr*, socklen_t));

#endif

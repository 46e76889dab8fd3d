#include "platform/simulation/channel_socket.h"

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/device_file.h"

int openChannelSocket(int (*attach)(int, const sockaddr*, socklen_t))
{
    // A socket address holds at most 107 characters, and the path of the root may be longer. So the address names the
    // folder by its file descriptor, in "/proc/self/fd".
    const int folder = open(DeviceFile("/tmp").path(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return -1;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::snprintf(address.sun_path, sizeof address.sun_path, "/proc/self/fd/%d%s", folder,
                  std::strrchr(kChannelSocket, '/'));

    int channel = socket(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (channel >= 0 && attach(channel, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        close(channel);
        channel = -1;
    }
    close(folder);
    return channel;
}

#include "platform/message_channel.h"

#include <cstdlib>

void* ipcmsg_alloc(int size)
{
    return std::malloc(static_cast<std::size_t>(size));
}

void ipcmsg_free(void* buffer)
{
    std::free(buffer);
}

int ipcmsg_send_and_recv(int, int, int, const void*, int, void*, int*, int)
{
    return -1;
}

int ipcmsg_send(int, int, int, const void*, int)
{
    return -1;
}

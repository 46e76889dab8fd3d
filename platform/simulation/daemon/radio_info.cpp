#include "platform/simulation/daemon/replies.h"
#include "platform/simulation/radio_state.h"

Bytes radioReply()
{
    Bytes reply;
    for (const char* radio : {"wlan0", "wlan1"})
        append(reply, simRadio(radio).record);
    return reply;
}

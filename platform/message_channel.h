// The message channel to the CAPWAP daemon.

#ifndef PLATFORM_MESSAGE_CHANNEL_H
#define PLATFORM_MESSAGE_CHANNEL_H

#ifdef __cplusplus
extern "C" {
#endif

/// A buffer of `size` bytes that the channel can transmit, its contents not initialised; null when there is none.
/// Released with ipcmsg_free().
void* ipcmsg_alloc(int size);

void ipcmsg_free(void* buffer);

/// Sends `request` to `destination` (1: the CAPWAP daemon) and waits at most `timeout_ms` for one reply. `flags` is 0.
/// `*reply_length` holds the capacity of `reply` on entry and the received bytes on return.
/// 0: answered; any other value: no answer.
int ipcmsg_send_and_recv(int destination, int flags, int type, const void* request, int request_length, void* reply,
                         int* reply_length, int timeout_ms);

/// Sends one message without waiting for an answer. 0: sent.
int ipcmsg_send(int destination, int flags, int type, const void* message, int length);

#ifdef __cplusplus
}
#endif

#endif

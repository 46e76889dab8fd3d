// The message channel to the CAPWAP daemon.

#ifndef PLATFORM_MESSAGE_CHANNEL_H
#define PLATFORM_MESSAGE_CHANNEL_H

#ifdef __cplusplus
extern "C" {
#endif

/// Returns a buffer of `size` bytes that the channel can transmit, not initialised, or null if there is no memory. The
/// caller releases it with ipcmsg_free().
void* ipcmsg_alloc(int size);

void ipcmsg_free(void* buffer);

/// Sends `request` to `destination` (1: the CAPWAP daemon) and waits at most `timeout_ms` for one reply. `flags` is 0.
/// `*reply_length` is the size of `reply` in bytes; on return it is the number of received bytes. Returns 0 if a reply
/// was received, any other value if not.
int ipcmsg_send_and_recv(int destination, int flags, int type, const void* request, int request_length, void* reply,
                         int* reply_length, int timeout_ms);

/// Sends one message and does not wait for an answer. Returns 0 if it was sent.
int ipcmsg_send(int destination, int flags, int type, const void* message, int length);

#ifdef __cplusplus
}
#endif

#endif

// Replacing a configuration file: the new text is written beside the old one and renamed over it.

#ifndef CONF_CONF_REPLACE_H
#define CONF_CONF_REPLACE_H

#include "conf/conf_file.h"

/// While one lives, no other shell saves a configuration file. A holder may take it again; it waits for others alone.
class ConfFolderLock
{
public:
    /// Waits for the others for at most a second.
    ConfFolderLock();
    ~ConfFolderLock();
    ConfFolderLock(const ConfFolderLock&) = delete;
    ConfFolderLock& operator=(const ConfFolderLock&) = delete;

    /// False when another shell did not come to its end. A folder that cannot be locked is no obstacle.
    [[nodiscard]] static bool isOurs();
};

/// Replaces a configuration file by `text`, whole or not at all: a reader finds the old file or the new one, whatever
/// happens meanwhile. Only a file that alone is writable in its folder is written in place. The new
/// file is never as old as the one before it. 0, or -1 with the old file as it was: silently when it cannot be opened,
/// with a message when the text cannot be written to its end or another shell keeps the lock.
int replaceConfFile(const char* devicePath, const ConfText& text);

/// Has a configuration file that a tool wrote, and its folder, reach the disk.
void syncConfFile(const char* devicePath);

#endif

// Replacing a configuration file: the new text is written to a temporary file in the same folder, which is then renamed
// over the old file.

#ifndef CONF_CONF_REPLACE_H
#define CONF_CONF_REPLACE_H

#include "conf/conf_file.h"

/// An advisory lock on "/cfg". While an object lives, no other shell saves a configuration file. Objects may be nested
/// in one process.
class ConfFolderLock
{
public:
    /// Waits for at most a second until other shells have released the lock. isOurs() tells whether it was taken;
    /// replaceConfFile() checks that itself.
    ConfFolderLock();
    ~ConfFolderLock();
    ConfFolderLock(const ConfFolderLock&) = delete;
    ConfFolderLock& operator=(const ConfFolderLock&) = delete;

    /// Whether this process has the lock. Also true if the folder cannot be locked at all.
    [[nodiscard]] static bool isOurs();
};

/// Replaces a configuration file by `text`. The replacement is atomic: a reader finds the old file or the new one, also
/// after a crash. There is one exception: if no file can be created in the folder, or if the file is a mount point, the
/// old file is overwritten. The modification time of the new file is later than that of the old one. Returns 0, or -1
/// with the old file unchanged. Prints a message if the text cannot be written or another shell keeps the lock. Prints
/// none if the file cannot be opened.
int replaceConfFile(const char* devicePath, const ConfText& text);

/// Syncs a configuration file that a tool has written, and its folder.
void syncConfFile(const char* devicePath);

#endif

// Formats of messages that several commands print. The argument is the refused value, or the path of the file.

#ifndef CONF_MESSAGES_H
#define CONF_MESSAGES_H

inline constexpr char kInvalidParameter[] = "    Error: Invalid parameter '%s'.\n";
inline constexpr char kCanNotRead[] = "    Error: Can not read %s.\n";

#endif

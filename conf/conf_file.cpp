#include "conf/conf_file.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "shell/output.h"

bool splitConfLine(char* line, char** key, char** value)
{
    char* equals = std::strchr(line, '=');
    if (equals == nullptr)
        return false;
    *equals = '\0';
    *key = line;
    *value = equals + 1;
    return true;
}

ConfItems::ConfItems(const char* reader, const char* devicePath)
    : reader_(reader), path_(devicePath), lines_(devicePath)
{
}

bool ConfItems::next()
{
    for (char* line = lines_.next(); line != nullptr; line = lines_.next()) {
        if (line[0] == '#' || line[0] == '\0')
            continue;
        if (splitConfLine(line, &key_, &value_))
            return true;
        cli_printf("%s: %s Line %d: Invalid line '%s'\n", reader_, path_, lines_.count(), line);
    }
    if (failed())
        cli_printf("%s: Could not open conf file %s.\n", reader_, path_);
    return false;
}

void ConfText::append(const char* format, ...)
{
    const std::size_t room = sizeof bytes_ - length_;
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(bytes_ + length_, room, format, arguments);
    va_end(arguments);
    if (length >= 0 && static_cast<std::size_t>(length) < room)
        length_ += static_cast<std::size_t>(length);
    else
        complete_ = false;
}

#include "shell/idle_timeout.h"

#include <cstring>
#include <unistd.h>

#include "base/file.h"
#include "base/text.h"

unsigned readIdleTimeout()
{
    constexpr unsigned kDefault = 300;
    const int file = openPlainFile(kIdleTimeoutFile); // if there is none, nothing can be read
    char line[64]{};
    const bool found = readAll(file, line, sizeof line - 1) > 0;
    close(file);
    line[std::strcspn(line, "\n")] = '\0';
    return found ? static_cast<unsigned>(numberFrom(line)) : kDefault;
}

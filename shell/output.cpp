#include "shell/output.h"

#include <cstdarg>
#include <cstdio>
#include <unistd.h>

#include "base/file.h"
#include "shell/pieces.h"
#include "shell/pipe.h"
#include "shell/signals.h"

namespace
{

constinit char message[kMessageSize]{};
constinit bool isGathered = false;
constinit Pieces pieces;

/// An interrupt drops what a slow terminal has not taken yet.
void show(const char* bytes, std::size_t length)
{
    std::fflush(stdout);
    transferAll(length, [=](std::size_t done) {
        return isInterrupted() ? 0 : write(STDOUT_FILENO, bytes + done, length - done);
    });
}

} // namespace

void cli_print(const char* text)
{
    if (isInterrupted())
        return;
    if (pipeIsActive())
        appendToPipe(text);
    else if (isGathered)
        pieces.append(text, show);
    else
        std::fputs(text, stdout);
}

int cli_printf(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    cli_print(message);
    constexpr int kLongest = static_cast<int>(kMessageSize) - 1;
    return length < kLongest ? length : kLongest;
}

GatheredOutput::GatheredOutput()
{
    isGathered = true;
}

GatheredOutput::~GatheredOutput()
{
    pieces.finish(show);
    isGathered = false;
}

#include "shell/output.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <unistd.h>

#include "base/file.h"
#include "base/text.h"
#include "shell/pieces.h"
#include "shell/signals.h"

namespace
{

constinit char message[kMessageSize]{};
constinit OutputSink sink = nullptr;
constinit bool isGathered = false;
constinit Pieces pieces;

/// Writes to the standard output. Stops at an interrupt.
void show(const char* bytes, std::size_t length)
{
    std::fflush(stdout);
    transferAll(length, [=](std::size_t done, std::size_t rest) {
        return isInterrupted() ? 0 : write(STDOUT_FILENO, bytes + done, rest);
    });
}

int countControlBytes(std::string_view text)
{
    int count = 0;
    for (const char c : text)
        count += isControlByte(c) ? 1 : 0;
    return count;
}

/// Replaces the control bytes that the arguments brought into the message by '?'. To find them, formats the arguments
/// once more, with blanks in place of the format's own control bytes.
void maskArguments(const char* format, va_list arguments)
{
    char plainFormat[kMessageSize];
    copyText(plainFormat, format);
    std::replace_if(plainFormat, plainFormat + std::strlen(plainFormat), isControlByte, ' ');
    char plain[kMessageSize];
    std::vsnprintf(plain, sizeof plain, plainFormat, arguments);
    for (std::size_t i = 0; plain[i] != '\0'; ++i)
        if (isControlByte(plain[i]))
            message[i] = '?';
}

} // namespace

void setOutputSink(OutputSink newSink)
{
    sink = newSink;
}

void cli_print(const char* text)
{
    if (isInterrupted())
        return;
    if (sink != nullptr)
        sink(text);
    else if (isGathered)
        pieces.append(text, show);
    else
        std::fputs(text, stdout);
}

int cli_printf(const char* format, ...)
{
    constexpr int kLongest = static_cast<int>(kMessageSize) - 1;
    va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(message, sizeof message, format, arguments);
    va_end(arguments);
    // If the message has as many control bytes as the format, the arguments have none.
    if (length > kLongest || countControlBytes(message) != countControlBytes(format)) {
        va_start(arguments, format);
        maskArguments(format, arguments);
        va_end(arguments);
    }
    cli_print(message);
    return std::min(length, kLongest);
}

void cli_printLines(const char* text)
{
    copyText(message, text);
    maskControlBytes(message, "\n");
    cli_print(message);
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

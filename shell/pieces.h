// A buffer that collects texts and passes them on in pieces of some kilobytes.

#ifndef SHELL_PIECES_H
#define SHELL_PIECES_H

#include <cstddef>

class Pieces
{
public:
    using HandOn = void (*)(const char* bytes, std::size_t length);

    /// Appends a text. Calls `handOn` with each full piece.
    void append(const char* text, HandOn handOn);

    /// Calls `handOn` with the rest, also if it is empty.
    void finish(HandOn handOn);

    void clear() { length_ = 0; }

private:
    std::size_t length_ = 0;
    char bytes_[4096]{};
};

#endif

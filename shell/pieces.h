// Text that is collected and handed on in pieces of some kilobytes.

#ifndef SHELL_PIECES_H
#define SHELL_PIECES_H

#include <cstddef>

class Pieces
{
public:
    using HandOn = void (*)(const char* bytes, std::size_t length);

    /// Adds a text; `handOn` gets each piece that is full.
    void append(const char* text, HandOn handOn);

    /// Hands on the rest.
    void finish(HandOn handOn);

    void clear() { length_ = 0; }

private:
    std::size_t length_ = 0;
    char bytes_[4096]{};
};

#endif

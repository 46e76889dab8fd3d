#include "shell/pieces.h"

#include <algorithm>
#include <cstring>

void Pieces::append(const char* text, HandOn handOn)
{
    for (std::size_t left = std::strlen(text); left > 0;) {
        const std::size_t taken = std::min(left, sizeof bytes_ - length_);
        std::memcpy(bytes_ + length_, text, taken);
        length_ += taken;
        text += taken;
        left -= taken;
        if (length_ == sizeof bytes_)
            finish(handOn);
    }
}

void Pieces::finish(HandOn handOn)
{
    handOn(bytes_, length_);
    length_ = 0;
}

// The line tokenizer: cuts a line into words and pipe segments. It knows no quoting and no escapes.

#ifndef SHELL_TOKENIZER_H
#define SHELL_TOKENIZER_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// Characters of a line that are kept. The rest is dropped.
inline constexpr std::size_t kLineLength = 1023;
inline constexpr std::size_t kSegmentCount = 10;
inline constexpr std::size_t kTokenCount = 256;

/// What a character means to the tokenizer. '|', '&' and ';' are all pipe symbols.
enum class CharClass : std::uint8_t { kNormal = 0, kTab = 1, kBlank = 5, kEnd = 6, kPipe = 12, kInvalid = 13 };
CharClass classOf(char c);

/// With kComplete, `argc` does not count the word that is being typed.
enum class ParseMode { kComplete, kExecute };

enum class ParseResult {
    kEnd,     ///< the whole line was split into words
    kRejected ///< the line has an invalid character or too many words; a message was printed
};

/// The words of the current line.
struct TokenStore {
    /// Room for a full line, a terminator, a pipe symbol and its terminator.
    static constexpr std::size_t kSegmentSize = kLineLength + 3;

    char segments[kSegmentCount][kSegmentSize]; ///< the words of each pipe segment, each terminated
    std::size_t segmentIndex;                   ///< the segment being filled
    char* tokens[kTokenCount + 1];              ///< starts of the words and pipe symbols, in line order; then null
    int argc;                                   ///< complete tokens
    std::size_t position;                       ///< where the current segment is written
    int tokenCount;                             ///< tokens stored
    int pipeIndex;                              ///< the token of the first pipe symbol; 0: the line has none
    CharClass previous;                         ///< class of the previous character
};

/// The process's store: the result of the last parseLine().
extern TokenStore tokenStore;

/// Cuts `line` into the store. A tab, or a tenth pipe symbol, discards what came before it.
ParseResult parseLine(std::string_view line, ParseMode mode);

/// The number of words before the first pipe symbol; of all words if there is no pipe symbol.
int wordCount();

/// The word that is still being typed, or null.
const char* partialWord();

/// Writes the tokens from `first` to `last` - 1, each with a blank before it. A word that follows a pipe symbol without
/// a blank has no token of its own. It is written after the pipe symbol, so that no segment loses its first word.
/// Truncates the text to the size of the buffer, which must not be 0. Returns the number of characters written.
std::size_t appendTokens(std::span<char> buffer, int first, int last);

/// Prints the store's counters and tokens, for diagnosis.
void dumpTokens();

#endif

#include "shell/tokenizer.h"

#include <array>
#include <cstdio>

#include "base/text.h"
#include "shell/output.h"

constinit TokenStore tokenStore{};

namespace
{

constexpr const char* kClassNames[] = {"normal", "tab",   "CTL+C", "CTL+Z", "ESC",     "BLANK", "END",
                                       "LEFT",   "RIGHT", "UP",    "DOWN",  "INVALID", "PIPE",  ""};
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

consteval std::array<CharClass, 256> makeClasses()
{
    std::array<CharClass, 256> classes{};
    for (const char c : std::string_view("&|;"))
        classes[static_cast<unsigned char>(c)] = CharClass::kPipe;
    for (const char c : std::string_view("$`><#()\\"))
        classes[static_cast<unsigned char>(c)] = CharClass::kInvalid;
    classes['\t'] = CharClass::kTab;
    classes[' '] = CharClass::kBlank;
    classes['\0'] = classes['\n'] = CharClass::kEnd;
    return classes;
}

constexpr std::array<CharClass, 256> kClasses = makeClasses();

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && kWhiteSpace.find(text.front()) != std::string_view::npos)
        text.remove_prefix(1);
    while (!text.empty() && kWhiteSpace.find(text.back()) != std::string_view::npos)
        text.remove_suffix(1);
    return text;
}

/// Empties the store. Its texts are terminated at every step, so nothing else has to be cleared.
void resetStore()
{
    for (auto& segment : tokenStore.segments)
        segment[0] = '\0';
    tokenStore.segmentIndex = 0;
    tokenStore.tokens[0] = nullptr;
    tokenStore.argc = 0;
    tokenStore.position = 0;
    tokenStore.tokenCount = 0;
    tokenStore.pipeIndex = 0;
    tokenStore.previous = CharClass::kBlank;
}

char* writePlace()
{
    return &tokenStore.segments[tokenStore.segmentIndex][tokenStore.position];
}

/// Stores the write position as the start of a token. Returns false if there are too many tokens.
bool startToken()
{
    if (tokenStore.tokenCount == static_cast<int>(kTokenCount)) {
        std::printf("    Error: Too many words, the upper limit is %zu.\n", kTokenCount);
        return false;
    }
    tokenStore.tokens[tokenStore.tokenCount++] = writePlace();
    tokenStore.tokens[tokenStore.tokenCount] = nullptr;
    return true;
}

void writeChar(char c)
{
    writePlace()[0] = c;
    writePlace()[1] = '\0';
}

void endWord()
{
    *writePlace() = '\0';
    if (tokenStore.position <= kLineLength)
        ++tokenStore.position;
}

bool addNormal(char c)
{
    if (tokenStore.position >= kLineLength)
        return true;
    if (tokenStore.previous == CharClass::kBlank && !startToken())
        return false;
    writeChar(c);
    ++tokenStore.position;
    return true;
}

bool addPipe(char c)
{
    if (tokenStore.previous == CharClass::kNormal) {
        endWord();
        tokenStore.previous = CharClass::kBlank;
    }
    if (tokenStore.previous == CharClass::kBlank) {
        if (tokenStore.pipeIndex == 0)
            tokenStore.pipeIndex = tokenStore.tokenCount;
        if (!startToken())
            return false;
    }
    writeChar(c);
    ++tokenStore.segmentIndex;
    tokenStore.position = 0;
    return true;
}

void endLine(ParseMode mode)
{
    *writePlace() = '\0';
    const bool typing = mode == ParseMode::kComplete && tokenStore.previous == CharClass::kNormal;
    tokenStore.argc = tokenStore.tokenCount - (typing && tokenStore.tokenCount > 0 ? 1 : 0);
}

/// Processes one character. Returns false if the line is rejected.
bool step(char c, ParseMode mode)
{
    const CharClass kind = classOf(c);
    bool allowed = true;
    switch (kind) {
    case CharClass::kNormal:
        allowed = addNormal(c);
        break;
    case CharClass::kBlank:
        if (tokenStore.position == 0)
            break;
        if (tokenStore.previous == CharClass::kBlank)
            *writePlace() = '\0';
        else
            endWord();
        break;
    case CharClass::kEnd:
        endLine(mode);
        break;
    case CharClass::kPipe:
        allowed = addPipe(c);
        if (tokenStore.segmentIndex == kSegmentCount) {
            resetStore();
            return true;
        }
        break;
    case CharClass::kTab:
        resetStore();
        return true;
    case CharClass::kInvalid:
        std::printf("Invalid characters %c \n", c);
        allowed = false;
        break;
    }
    tokenStore.previous = kind;
    return allowed;
}

/// The word that follows the pipe symbol `index` without a blank. Such a word has no token. Returns null if there is
/// none.
const char* gluedWord(int index)
{
    const char* symbol = tokenStore.tokens[index];
    if (classOf(*symbol) != CharClass::kPipe)
        return nullptr;
    const auto segment = static_cast<std::size_t>(symbol - tokenStore.segments[0]) / TokenStore::kSegmentSize + 1;
    const char* word = tokenStore.segments[segment];
    return *word == '\0' || tokenStore.tokens[index + 1] == word ? nullptr : word;
}

} // namespace

CharClass classOf(char c)
{
    return kClasses[static_cast<unsigned char>(c)];
}

ParseResult parseLine(std::string_view line, ParseMode mode)
{
    resetStore();
    line = trimmed(line);
    if (!line.empty() && classOf(line.front()) == CharClass::kPipe) {
        line.remove_prefix(1);
        line = trimmed(line);
    }
    for (const char c : line)
        if (!step(c, mode))
            return ParseResult::kRejected;
    step('\0', mode);
    return ParseResult::kEnd;
}

int wordCount()
{
    return tokenStore.pipeIndex != 0 ? tokenStore.pipeIndex : tokenStore.argc;
}

const char* partialWord()
{
    return tokenStore.tokenCount > tokenStore.argc ? tokenStore.tokens[tokenStore.tokenCount - 1] : nullptr;
}

std::size_t appendTokens(std::span<char> buffer, int first, int last)
{
    std::size_t length = 0;
    buffer[0] = '\0';
    for (int i = first; i < last && i < tokenStore.tokenCount; ++i) {
        length = appendWord(buffer, length, tokenStore.tokens[i]);
        if (const char* word = gluedWord(i); word != nullptr)
            length = appendWord(buffer, length, word);
    }
    return length;
}

void dumpTokens()
{
    cli_printf("index is %zu, token_cnt is %d, level is %d, prev type %s\n", tokenStore.position, tokenStore.argc,
               tokenStore.tokenCount, kClassNames[static_cast<int>(tokenStore.previous)]);
    for (int i = 0; i < tokenStore.tokenCount; ++i) {
        cli_print("\"");
        cli_printf("%s", tokenStore.tokens[i]);
        cli_print("\"");
    }
    cli_print("\n");
}

#include "shell/tokenizer.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/device.h"

namespace
{

using Words = std::vector<std::string>;

Words tokens()
{
    return {tokenStore.tokens, tokenStore.tokens + tokenStore.tokenCount};
}

Words segments()
{
    return {tokenStore.segments, tokenStore.segments + tokenStore.segmentIndex + 1};
}

} // namespace

TEST(Tokenizer, CutsLines)
{
    const struct {
        const char* text;
        Words tokens;
        int pipeIndex;
        Words segments;
    } lines[] = {
        {"  get   wtp  ", {"get", "wtp"}, 0, {"get"}},
        {"", {}, 0, {""}},
        {"ifconfig | grep eth0", {"ifconfig", "|", "grep", "eth0"}, 1, {"ifconfig", "grep"}},
        {"a b|c d", {"a", "b", "|", "d"}, 2, {"a", "c"}},
        {"a|b", {"a", "|"}, 1, {"a", "b"}},
        {"a  ;  b & c", {"a", ";", "b", "&", "c"}, 1, {"a", "b", "c"}},
        {"a || b", {"a", "|", "b"}, 1, {"a", "|", "b"}},
        {"a |", {"a", "|"}, 1, {"a", ""}},
        {"| help", {"help"}, 0, {"help"}},
        {" ; ; help", {";", "help"}, 0, {";", "help"}},
        {"lost\tget wtp", {"get", "wtp"}, 0, {"get"}},
        {"a | b\tc d", {"c", "d"}, 0, {"c"}},
        {"1|2|3|4|5|6|7|8|9|10| get wtp", {"get", "wtp"}, 0, {"get"}},
        {"ab\ncd", {"abcd"}, 0, {"abcd"}},
        {"'one two'", {"'one", "two'"}, 0, {"'one"}},
    };
    for (const auto& line : lines) {
        EXPECT_EQ(parseLine(line.text, ParseMode::kExecute), ParseResult::kEnd) << line.text;
        EXPECT_EQ(tokens(), line.tokens) << line.text;
        EXPECT_EQ(tokenStore.argc, static_cast<int>(line.tokens.size())) << line.text;
        EXPECT_EQ(tokenStore.pipeIndex, line.pipeIndex) << line.text;
        EXPECT_EQ(segments(), line.segments) << line.text;
        EXPECT_EQ(tokenStore.tokens[tokenStore.tokenCount], nullptr) << line.text;
    }
}

TEST(Tokenizer, RefusesForbiddenCharacters)
{
    for (const char c : std::string("$`><#()\\")) {
        const std::string output = outputOf([c] {
            EXPECT_EQ(parseLine(std::string("ping x") + c + "y | " + c, ParseMode::kExecute), ParseResult::kRejected);
        });
        EXPECT_EQ(output, std::string("Invalid characters ") + c + " \n");
    }
}

TEST(Tokenizer, HoldsItsBounds)
{
    const std::string full(kLineLength, 'x');
    for (const char* more : {"", "yz", " y | z", "|", "y; help"}) {
        EXPECT_EQ(parseLine(full + more, ParseMode::kExecute), ParseResult::kEnd);
        EXPECT_EQ(tokens()[0], full);
    }
    parseLine(full + "|", ParseMode::kExecute);
    EXPECT_EQ(tokens(), (Words{full, "|"}));
    parseLine("a " + full + " & b", ParseMode::kExecute);
    EXPECT_EQ(tokens(), (Words{"a", full.substr(2), "&", "b"}));

    std::string words;
    for (std::size_t i = 0; i < kTokenCount; ++i)
        words += "w ";
    EXPECT_EQ(parseLine(words, ParseMode::kExecute), ParseResult::kEnd);
    EXPECT_EQ(tokenStore.argc, static_cast<int>(kTokenCount));
    for (const char* surplus : {"w", "| grep x"})
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(parseLine(words + surplus, ParseMode::kExecute), ParseResult::kRejected); }),
                  "    Error: Too many words, the upper limit is 256.\n");
}

TEST(Tokenizer, JoinsTokensWithinTheBuffer)
{
    parseLine("ping  -c 1 | grep ms", ParseMode::kExecute);
    char text[32];
    EXPECT_EQ(appendTokens(text, 0, 3), 10U);
    EXPECT_STREQ(text, " ping -c 1");
    EXPECT_EQ(appendTokens(text, 3, 99), 10U);
    EXPECT_STREQ(text, " | grep ms");
    char small[8];
    EXPECT_EQ(appendTokens(small, 0, 6), 7U);
    EXPECT_STREQ(small, " ping -");
    EXPECT_EQ(appendTokens(text, 2, 2), 0U);
    EXPECT_STREQ(text, "");
    parseLine("help|grep a|grep", ParseMode::kExecute);
    EXPECT_EQ(appendTokens(text, 0, 99), 21U);
    EXPECT_STREQ(text, " help | grep a | grep");
}

TEST(Tokenizer, DumpsItsState)
{
    parseLine("get wtp |", ParseMode::kExecute);
    EXPECT_EQ(outputOf(dumpTokens), "index is 0, token_cnt is 3, level is 3, prev type END\n\"get\"\"wtp\"\"|\"\n");
}

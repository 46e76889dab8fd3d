#include "cli/pass_through.h"

#include <cstdio>
#include <unistd.h>

#include "cli/external.h"
#include "cli/output.h"
#include "cli/tokenizer.h"
#include "platform/device_file.h"

namespace
{

/// Output of a captured tool that was called as a plain handler.
constexpr char kOutputFile[] = "/tmp/cli_cmd_output_file";

/// Tokens of the current line as command text. Text that does not fit a command line is one character too long for it
/// here, so the command is refused where it is composed.
class TokenText
{
public:
    TokenText(int first, int last) { appendTokens(text_, first, last); }
    [[nodiscard]] const char* text() const { return text_; }

private:
    char text_[kCommandLength + 2];
};

/// The words with a blank behind each, cut like TokenText.
class WordText
{
public:
    WordText(int argc, char** argv)
    {
        std::size_t length = 0;
        text_[0] = '\0';
        for (int i = 0; i < argc && length < sizeof text_ - 1; ++i) {
            std::snprintf(text_ + length, sizeof text_ - length, "%s ", argv[i]);
            while (text_[length] != '\0')
                ++length;
        }
    }
    [[nodiscard]] const char* text() const { return text_; }

private:
    char text_[kCommandLength + 2];
};

} // namespace

int capturePassThrough(int argc, char** argv)
{
    const DeviceFile output(kOutputFile);
    if (runCommandf("%s> %s\n", WordText(argc, argv).text(), output.path()) != -1)
        runCommandf("cat %s", output.path());
    return 0;
}

int directPassThrough(int argc, char** argv)
{
    runCommandf("%s", WordText(argc, argv).text());
    return 0;
}

void runCaptured()
{
    if (createPipeFile() != 0) {
        runDirect();
        return;
    }
    const DeviceFile file(kPipeFile);
    runCommandf("%s > %s; cat %s%s", TokenText(0, wordCount()).text(), file.path(), file.path(),
                TokenText(wordCount(), tokenStore.argc).text());
}

void runDirect()
{
    runCommandf("%s", TokenText(0, tokenStore.argc).text());
}

int runPiped(CliHandler handler)
{
    const DeviceFile file(kPipeFile);
    const bool isNew = beginPipe() == 0;
    const int result = handler(tokenStore.pipeIndex, tokenStore.tokens);
    flushPipe();
    endPipe();
    // What an earlier line left in a place that cannot be written must not show.
    const bool isOld = !isNew && access(file.path(), F_OK) == 0;
    runCommandf("cat %s%s", isOld ? "/dev/null" : file.path(), TokenText(tokenStore.pipeIndex, tokenStore.argc).text());
    return result;
}

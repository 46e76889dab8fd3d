#include "shell/pass_through.h"

#include "platform/device_file.h"
#include "shell/pipe_file.h"
#include "shell/tokenizer.h"
#include "shell/tools.h"

namespace
{

/// Tokens of the current line as command text, with a blank before each token. The buffer has one byte more than the
/// longest command. So a command that is too long still exceeds the limit, and composeCommand() refuses it.
class TokenText
{
public:
    TokenText(int first, int last) { appendTokens(text_, first, last); }
    [[nodiscard]] const char* text() const { return text_; }

private:
    char text_[kCommandLength + 2];
};

/// Returns false, and does not run the tool, if the file for its output cannot be created.
bool runCaptured()
{
    if (!testPipeRoom())
        return false;
    const DeviceFile file(pipeFilePath());
    runCommandf("%s > %s; cat %s%s", TokenText(0, wordCount()).text(), file.path(), file.path(),
                TokenText(wordCount(), tokenStore.argc).text());
    if (!testPipeRoom())
        printPipeError();
    return true;
}

} // namespace

int capturePassThrough(int argc, char** argv)
{
    beginPipe();
    const bool hasRun = runCaptured();
    endPipe();
    return hasRun ? 0 : directPassThrough(argc, argv);
}

int directPassThrough(int, char**)
{
    runCommandf("%s", TokenText(0, tokenStore.argc).text());
    return 0;
}

bool isTool(const cli_node& node)
{
    return node.handler == capturePassThrough || node.handler == directPassThrough;
}

void runShellCommand(const char* command)
{
    if (!pipeIsActive()) {
        runCommand(command);
    } else if (flushPipe()) {
        runCommandf("%s >> %s", command, DeviceFile(pipeFilePath()).path());
        testPipeRoom();
    }
}

void runRestOfLine()
{
    runCommandf("cat %s%s", DeviceFile(pipeFilePath()).path(), TokenText(tokenStore.pipeIndex, tokenStore.argc).text());
}

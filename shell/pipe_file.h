// The pipe of a line: collects what a built-in prints and stores it in the session's pipe file, which the system shell
// then feeds to the rest of the line.
//
// The pipe file is "/tmp/cli_pipe_file" if the session can have it: a plain file of this user, with no other name,
// locked against other sessions until the line ends. If it cannot, the file is "/tmp/cli_pipe_file." with the number of
// the process, and is removed when the line ends.

#ifndef SHELL_PIPE_FILE_H
#define SHELL_PIPE_FILE_H

/// Begins the pipe of a line, empty. The file is made when something has to go into it.
void beginPipe();

/// Ends the pipe of a line and closes its file.
void endPipe();

/// Whether a line has begun its pipe and not ended it yet.
bool pipeIsActive();

/// Appends a text. It is buffered, and written to the file by the kilobyte.
void appendToPipe(const char* text);

/// Writes the buffer to the file, and makes the file if the line has none yet. False if the file cannot be made, or
/// could not take everything of the line.
bool flushPipe();

/// Writes a page to the file and takes it back, because tools do not report a full disk. False if it does not fit, or
/// if flushPipe() fails.
bool testPipeRoom();

/// Device path of the file, for command texts and messages.
const char* pipeFilePath();

/// Says that the file could not be made, or could not take everything.
void printPipeError();

/// While an object lives, what a library prints on standard output goes into the pipe of the line, if it has one.
class PipedOutput
{
public:
    PipedOutput();
    ~PipedOutput();
    PipedOutput(const PipedOutput&) = delete;
    PipedOutput& operator=(const PipedOutput&) = delete;

private:
    int terminal_; ///< keeps the standard output; -1 if it was not redirected
};

#endif

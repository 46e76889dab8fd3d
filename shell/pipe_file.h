// The pipe of a line. It collects the output of a handler in the pipe file of the session. The system shell then runs
// the rest of the line with this file as its input.
//
// The pipe file is "/tmp/cli_pipe_file" if the session can have it: a plain file of this user, with no other name,
// locked against other sessions until the line ends. If it cannot, the file is "/tmp/cli_pipe_file." with the number of
// the process, and is removed when the line ends. The common file stays.

#ifndef SHELL_PIPE_FILE_H
#define SHELL_PIPE_FILE_H

/// Begins an empty pipe for a line. The file is created when the first bytes are written to it.
void beginPipe();

/// Ends the pipe of a line and closes its file.
void endPipe();

/// Whether a line has begun its pipe and not ended it yet.
bool pipeIsActive();

/// Appends a text. The text is buffered, and written to the file in pieces of some kilobytes.
void appendToPipe(const char* text);

/// Writes the buffer to the file, and makes the file if the line has none yet. Returns false if the file cannot be
/// made, or if a part of the line's output could not be written to it.
bool flushPipe();

/// Tools do not report a full disk. Therefore this function tests whether the disk has room for more output: it fills
/// the last page of the file, or adds a page if the last one is full, and truncates the file to its old size. Returns
/// false if there is no room, or if flushPipe() fails.
bool testPipeRoom();

/// The path of the file on the device (see DeviceFile), for command texts and messages.
const char* pipeFilePath();

/// Prints that the file could not be created or is incomplete.
void printPipeError();

/// While such an object exists, text that a library prints to the standard output goes into the pipe of the current
/// line. If the line has no pipe, nothing is redirected.
class PipedOutput
{
public:
    PipedOutput();
    ~PipedOutput();
    PipedOutput(const PipedOutput&) = delete;
    PipedOutput& operator=(const PipedOutput&) = delete;

private:
    int terminal_; ///< duplicate of the original standard output; -1 if it was not redirected
};

#endif

// The command line and the terminal, as UTF-8 on both systems. Beside the code that they share
// there is a source file for each system.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

// The program's arguments, without its own name, as UTF-8. On Linux they are the bytes as given; on
// Windows, whose shells do not, a pattern of * and ? in the last part of a path is replaced by the
// files that it stands for, when there are any.
std::vector<std::string> ConsoleArguments(int count, char **arguments);

// Makes standard output take UTF-8 bytes unchanged. Called once, before the first output.
void PrepareConsole();

// Whether what is written to the stream goes to a terminal.
bool IsTerminal(FILE *stream);

// A UTF-8 text that came from a file or names one, as it is written to people: a control character,
// line ends too, is replaced by a picture of it, and what else steers text (platform/utf8.h) by
// U+FFFD, so that no file can steer a terminal or begin a line.
std::string SafeText(const std::string &text);

// Writes UTF-8 text and flushes the stream. Returns false when it could not all be written.
bool PrintText(FILE *stream, const std::string &text);

// Whether the last failed PrintText failed because nobody reads the other end any more.
bool OutputIsClosed();

// From this call on a request to stop (Ctrl+C, a termination signal, a terminal that closes) no
// longer ends the program at once; StopRequested tells that there was one.
void CatchStopRequests();
bool StopRequested();

// What the tool needs of the process it runs in.
#pragma once

#include <cstddef>

// Makes sure that what is written to standard output ends up nowhere else where it is closed, and
// that a reader who has gone away (a closed pipe) is an ordinary write error.
void PrepareStandardOutput();

// Writes to standard output, as text with the host's line ends. What cannot be written is lost.
void WriteStandardOutput(const char* text, size_t size);

// Ends the process at once with the given exit status; nothing is flushed or closed first.
[[noreturn]] void EndProcess(int status);

// What the tool needs of the process it runs in.
#pragma once

// Makes standard output collect what is printed until it is flushed, and makes a reader that has
// gone away (a closed pipe) an ordinary write error instead of the end of the process.
void PrepareStandardOutput();

// Ends the process at once with the given exit status; nothing is flushed or closed first.
[[noreturn]] void EndProcess(int status);

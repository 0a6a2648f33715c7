// What the engineering edition's handlers have in common. They return 1 for a request that the
// driver took and 0 for one that it refused.
#pragma once

// Prints "Invalid parameters" with its line end and returns `result`.
int InvalidParameters(int result);

// Prints the last-error code without a line end and returns 0.
int RequestRefused();

// The argument as typed, an empty text where the command line ends before it.
const char* ArgumentText(int argc, char** argv, int index);

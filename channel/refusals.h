// What many commands print when they cannot do what was asked.
#pragma once

#include <cstdint>

// Prints "Invalid parameters" with its line end and returns `result`.
int PrintInvalidParameters(int result);

// Prints "Error: Parameters are not correct!!" with its line end and returns 1.
int PrintIncorrectParameters();

// Prints "Allocated memory failed" with its line end and returns `result`.
int PrintOutOfMemory(int result);

// Prints "Error in DeviceIoControl : <code>" with the code of the refused request and without a
// line end. Returns `result`.
int PrintRequestError(int result = 1);

// The same with a line end.
int PrintRequestErrorLine(int result);

// Prints the error code, the advice for it, and the two closing lines.
void PrintDriverErrorAdvice(uint32_t code);

// Prints the two lines after every advice: where to look up the meaning of the code.
void PrintErrorPageLines();

// The reports that several commands print after a failed request.
#pragma once

#include <cstdint>

// Prints "Error in DeviceIoControl : <code>" with the last-error code and without a line end.
void PrintRequestError();

// The same with a line end.
void PrintRequestErrorLine();

// Prints the error code, the advice for it, and the two closing lines.
void PrintDriverErrorAdvice(uint32_t code);

// Prints the two lines after every advice: where to look up the meaning of the code.
void PrintErrorPageLines();

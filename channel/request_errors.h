// The reports that several commands print after a failed request.
#pragma once

#include <cstdint>

// "Error in DeviceIoControl : <code>" with the last-error code and no line end.
void PrintRequestError();

// The same with a line end.
void PrintRequestErrorLine();

// The error code, one piece of advice chosen by it, and the two closing lines.
void PrintDriverErrorAdvice(uint32_t code);

// The two lines that close every piece of advice: where the meaning of the code can be looked up.
void PrintErrorPageLines();

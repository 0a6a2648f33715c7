// The messages that most commands end with when they cannot do what was asked.
#pragma once

// Prints "Invalid parameters" with its line end and returns `result`.
int InvalidParameters(int result);

// Prints "Error: Parameters are not correct!!" with its line end and returns 1.
int IncorrectParameters();

// Prints "Allocated memory failed" with its line end and returns `result`.
int OutOfMemory(int result);

// Prints the code of a refused request, without a line end, and returns `result`.
int RequestRefused(int result);

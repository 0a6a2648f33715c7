// Files and variables by the host's own calls, for what is recorded beside the tool's own
// output. Names are UTF-8 on Windows, bytes elsewhere.
#pragma once

#include <cstdint>

using HostFile = intptr_t;
constexpr HostFile NoHostFile = -1;

// A variable's value; null if it is unset or empty.
const char* HostVariable(const char* name);

// Creates or empties a file. Returns NoHostFile on failure.
HostFile CreateHostFile(const char* name);

// Returns false if not all bytes could be written.
bool WriteHostFile(HostFile file, const char* bytes, uint32_t size);

// Continues writing at a position. Returns false if the file has no positions.
bool SeekHostFile(HostFile file, uint32_t position);

// Cuts a file after `size` bytes, if it can be cut. Writing goes on there.
void CutHostFile(HostFile file, uint32_t size);

// Waits until what was written would outlast a crash of the computer.
void SaveHostFile(HostFile file);

// Cuts a file after `size` bytes, if it can be cut, and closes it.
void EndHostFile(HostFile file, uint32_t size);

// Why the last call failed, in words or by its code.
constexpr int FileErrorSize = 128;
void LastFileError(char (&reason)[FileErrorSize]);

// Files that are written as a whole or not at all.
#pragma once

#include <cstddef>

// Writes a file under another name and renames it. After a full disk or a signal an earlier file is
// unchanged and there is no part of a new one. On failure prints a message and returns false.
bool WriteWholeFile(const char* name, const char* bytes, size_t size);

// Whether two names mean the same file, also through links.
bool IsSameFile(const char* name, const char* other);

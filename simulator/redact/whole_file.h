// Files that come into being as a whole.
#pragma once

#include <cstddef>

// Writes a file beside its place and renames it, so that a full disk or a signal leaves an earlier
// one as it was and no part of a new one. Returns false, after a message, on failure.
bool WriteWholeFile(const char* name, const char* bytes, size_t size);

// Whether two names are of one file, through links too.
bool IsSameFile(const char* name, const char* other);

// Says "a8000: NAME:0: what is wrong", with the reason in errno.
void ReportFileFailure(const char* name);

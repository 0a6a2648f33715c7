// The device's calls as the engineering edition makes them on Windows: they are passed on unchanged
// and, where A8000_TRACE names a file, recorded in it with what the driver answered.
#pragma once

#include <windows.h>

HANDLE RecordedCreateFileA(const char* path, DWORD access, DWORD sharing,
                           SECURITY_ATTRIBUTES* security, DWORD disposition, DWORD attributes,
                           HANDLE templateFile);
BOOL RecordedDeviceIoControl(HANDLE device, DWORD controlCode, void* input, DWORD inputLength,
                             void* output, DWORD outputLength, DWORD* bytesReturned,
                             OVERLAPPED* overlapped);
BOOL RecordedCloseHandle(HANDLE device);

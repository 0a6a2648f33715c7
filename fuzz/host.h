// The fuzz build includes this before each file of the tool. Memory and files then come from
// fuzz/replies_fuzz.cpp, which can refuse them and sees if one is not released.
#pragma once

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

void* FuzzCalloc(size_t count, size_t size);
void FuzzFree(void* block);
FILE* FuzzOpen(const char* path, const char* mode);
int FuzzClose(FILE* file);
[[noreturn]] void FuzzExit(int status);
int ToolMain(int argc, char** argv);

#ifdef WLANX_FUZZ_TOOL
#define calloc FuzzCalloc
#define free FuzzFree
#define fopen FuzzOpen
#define fclose FuzzClose
#define _exit FuzzExit
#define main ToolMain
#endif

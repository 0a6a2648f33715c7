// The signature that every command handler has.
#pragma once

// Takes the argument count and vector as the process received them: argv[0] is the program,
// argv[1] the command word. The result becomes the exit status.
using CommandHandler = int(int argc, char** argv);

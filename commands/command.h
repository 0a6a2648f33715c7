// The signature that every command handler has.
#pragma once

// Takes the arguments of the process: argv[0] is the program, argv[1] the command word. The result
// becomes the exit status.
using CommandHandler = int(int argc, char** argv);

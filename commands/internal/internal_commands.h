// The handlers of the engineering edition's commands.
#pragma once

int HandleCoexInfoCommand(int argc, char** argv);
int HandleWtblCommand(int argc, char** argv);
int HandleUwtblCommand(int argc, char** argv);

#pragma once

#include <string>
#include <vector>

#include "common/user_mode.h"

// Position 0 of the command line, as typed; the usage text names it.
extern std::string deamonName;
// The accepted command names, in the order the front end knows them.
extern std::vector<std::string> methodsInput;
// The output mode of the run; any letter but "M" leaves it at applicationMode.
extern UserMode outputMode;

// True when `command` is exactly one of methodsInput.
bool checkMethods(std::string command);

// The whole run: validation, mode choice, the progress message and one command. Returns the
// process status when the command completes; fatal conditions exit on their own.
int runFrontEnd(int argc, char* argv[]);

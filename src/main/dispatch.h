#pragma once

#include <string>
#include <vector>

// Runs the one command named at position 1 of `args` (the whole command line).
void dispatch(const std::vector<std::string>& args);

#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"

// The front end's message catalogue. Console texts go to `out`, the two argument errors to
// `err`; "input error" and "error config.json" end the process with status 1 in application and
// console mode. A mode above consoleMode makes every key a no-op.
void Usage(std::string key, UserMode mode, std::ostream& out = std::cout,
           std::ostream& err = std::cerr);

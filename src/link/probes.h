#pragma once

#include <iostream>

#include "common/user_mode.h"

// The eight yes/no state probes. Each runs one command, prints its answer in `mode` ("true" or
// "false" bare in application mode, a question and an answer line in console mode, nothing
// otherwise) and returns it.
bool isEnabledWired(UserMode mode, std::ostream& out = std::cout);
bool isEnabledWireless(UserMode mode, std::ostream& out = std::cout);
bool isLinkedWired(UserMode mode, std::ostream& out = std::cout);
bool isConnectedWireless(UserMode mode, std::ostream& out = std::cout);
bool isConnectedWired(UserMode mode, std::ostream& out = std::cout);
bool isConnectedTun0(UserMode mode, std::ostream& out = std::cout);
bool isConnectedPpp0(UserMode mode, std::ostream& out = std::cout);
bool isConnectedIpsec(UserMode mode, std::ostream& out = std::cout);

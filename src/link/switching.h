#pragma once

#include <iostream>

#include "common/user_mode.h"

// Interface switches: each prints its console line in console mode only, runs one command and
// returns the command's raw status.
int turnOnWireless(UserMode mode, std::ostream& out = std::cout);
int turnOnWired(UserMode mode, std::ostream& out = std::cout);
int turnOffWireless(UserMode mode, std::ostream& out = std::cout);
int turnOffWired(UserMode mode, std::ostream& out = std::cout);

// Forces the interface down, then brings its configured network up. True when bringing it up
// FAILED: the result is a failure flag.
bool connectWifi(UserMode mode, std::ostream& out = std::cout);
bool connectEthernet(UserMode mode, std::ostream& out = std::cout);

// Forces the interface down; returns the raw status.
int disconnectWifi(UserMode mode, std::ostream& out = std::cout);
int disconnectEthernet(UserMode mode, std::ostream& out = std::cout);

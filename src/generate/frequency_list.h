#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"

// The supplicant's freq_list value for `band` ("5" or "2.4"): all the output of the device's
// frequency-list utility, read in 200-byte pieces, with its line feeds removed.
std::string getWiFiFrequencies(std::string band, UserMode mode, std::ostream& out = std::cout);

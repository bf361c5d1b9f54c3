#pragma once

#include <iostream>

#include "common/user_mode.h"

// Writes the five network files from settingsTab in the fixed order: interfaces, resolver,
// wireless supplicant, wired supplicant, DHCP client. A writer that fails ends the run, so the
// files after it are left as they were.
void generateConfigs(UserMode mode, std::ostream& out = std::cout, std::ostream& err = std::cerr);

#pragma once

#include <iostream>

#include "common/user_mode.h"

// Writes the network files of the run's back end from settingsTab. On ifupdown: the five files
// in the fixed order interfaces, resolver, wireless supplicant, wired supplicant, DHCP client.
// On NetworkManager: the two profiles (see generateNetworkManagerFiles). A writer that fails ends
// the run, so the files after it are left as they were.
void generateConfigs(UserMode mode, std::ostream& out = std::cout, std::ostream& err = std::cerr);

// What set-wpa-config writes: the wireless supplicant file, or on NetworkManager the wlan0
// profile.
void generateWirelessConfig(UserMode mode, std::ostream& out = std::cout,
                            std::ostream& err = std::cerr);

#pragma once

#include <iostream>

#include "common/user_mode.h"

// The network files of a board whose links NetworkManager runs, from settingsTab: the eth0
// profile (unless `withWired` is false: set-wpa-config), the wlan0 profile, and the interfaces
// file only when it still holds a stanza for one of them. NetworkManager must answer first, so
// that nothing is written for a daemon that cannot take it. Each profile is loaded as soon as it
// is written; one that NetworkManager refuses is put back as it was and ends the run with status 1.
// The supplicant, DHCP client and resolver files are NetworkManager's own here and stay as they
// are.
void generateNetworkManagerFiles(bool withWired, UserMode mode, std::ostream& out = std::cout,
                                 std::ostream& err = std::cerr);

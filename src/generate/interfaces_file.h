#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"
#include "settings/network_settings.h"

extern const char* const kInterfacesPath;

// The whole /etc/network/interfaces for `settings`; with `openWired` the wired 802.1X lines are
// commented out whatever the wired security.
std::string renderInterfaces(const networkSettings& settings, bool openWired);

// The interfaces file of a board whose links NetworkManager runs: the loopback only, since a
// stanza for eth0 or wlan0 would take the link away from it.
std::string renderLoopbackInterfaces();

// Whether an interfaces file names eth0 or wlan0 in a stanza (iface, mapping, auto, allow-*).
bool claimsNetworkInterfaces(const std::string& text);

// Writes renderInterfaces(settingsTab, openWiredConfig) to kInterfacesPath, created 0644. A file
// that cannot be opened ends the run with status 1.
void generateInterfacesFile(UserMode mode, std::ostream& out = std::cout,
                            std::ostream& err = std::cerr);

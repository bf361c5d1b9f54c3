#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"
#include "settings/network_settings.h"

extern const char* const kResolvPath;

// The four lines of /etc/resolv.conf for static DNS; an unset value leaves its line empty.
std::string renderResolvConf(const dnsSettings& dns);

// Writes renderResolvConf(settingsTab.dns) to kResolvPath (created 0644) when DNS is static;
// otherwise leaves the file alone. A file that cannot be opened ends the run with status 1.
void generateResolvFile(UserMode mode, std::ostream& out = std::cout,
                        std::ostream& err = std::cerr);

#pragma once

#include <iostream>
#include <string>
#include <vector>

#include "common/user_mode.h"
#include "settings/network_settings.h"

extern const char* const kDhcpcdPath;

// The lines of an existing dhcpcd.conf that are kept: those before the first line containing
// "interface" anywhere, without their line ends.
std::vector<std::string> keptHead(std::istream& in);

// The prefix length written for `mask`: the significant bits of its octets read as a
// little-endian signed 32-bit integer, 0 when that is not positive or the mask is not a dotted
// quad. True prefixes come out only for octet-aligned masks with a zero last octet.
int prefixLength(const std::string& mask);

// The deny lines and the static blocks (wlan0 first) for `settings`.
std::vector<std::string> dhcpcdLines(const networkSettings& settings);

// `head` followed by dhcpcdLines(settings), each line ended by a line feed.
std::string renderDhcpcdConf(const std::vector<std::string>& head, const networkSettings& settings);

// Rewrites kDhcpcdPath: its kept head, then the lines for settingsTab. A file that cannot be
// read or rewritten ends the run with status 1.
void generateDhcpcdConf(UserMode mode, std::ostream& out = std::cout,
                        std::ostream& err = std::cerr);

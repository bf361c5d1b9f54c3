#pragma once

#include <string>

#include "check/finding.h"
#include "settings/network_settings.h"

// The addressing of an enabled interface of group `group` (kMemberEth or kMemberWlan): for type
// "static" its address, mask and gateway as the interfaces file and the DHCP client file take
// them; a type that misses "static" only by case or blanks is taken as DHCP.
void checkAddressing(const char* group, const std::string& type, const std::string& address,
                     const std::string& mask, const std::string& gateway, findingList& found);

// The DNS group: for type "static" its servers, which both the resolver file and the static
// blocks use.
void checkDns(const dnsSettings& dns, findingList& found);

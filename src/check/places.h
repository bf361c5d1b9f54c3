#pragma once

#include <string>

// Places of config.json members, as findings name them.

// A member of the interface group `group` (kMemberEth or kMemberWlan).
std::string interfaceMember(const char* group, const char* member);

// A member of the DNS group.
std::string dnsMember(const char* member);

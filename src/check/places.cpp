#include "check/places.h"

#include "settings/config_members.h"

std::string interfaceMember(const char* group, const char* member) {
  return std::string(kMemberNetworkSettings) + "/" + kMemberInterfaces + "/" + group + "/" + member;
}

std::string dnsMember(const char* member) {
  return std::string(kMemberNetworkSettings) + "/" + kMemberDns + "/" + member;
}

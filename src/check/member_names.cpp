#include "check/member_names.h"

#include <initializer_list>

#include "settings/config_members.h"

namespace {

using names = std::initializer_list<const char*>;

const names kTopMembers = {kMemberEncoding, kMemberNetworkSettings};
const names kNetworkMembers = {kMemberInterfaces, kMemberDns};
const names kInterfacesMembers = {kMemberEth, kMemberWlan};
const names kEthMembers = {kMemberEnabled,
                           kMemberType,
                           kMemberIpAddress,
                           kMemberNetworkMask,
                           kMemberDefaultGateway,
                           kMemberSecurity,
                           kMemberAuthenticationMethod,
                           kMemberCaCertificate,
                           kMemberPkcs12Certificate,
                           kMemberPkcs12Password,
                           kMemberUserName,
                           kMemberUserPassword,
                           kMemberFallback,
                           kMemberAskForCredentials};
const names kWlanMembers = {kMemberEnabled,        kMemberType,
                            kMemberSsid,           kMemberAdvancedSecurity,
                            kMemberSecurity,       kMemberAuthenticationMethod,
                            kMemberCaCertificate,  kMemberPkcs12Certificate,
                            kMemberPkcs12Password, kMemberEncryption,
                            kMemberHiddenSsid,     kMemberPassphrase,
                            kMemberIpAddress,      kMemberNetworkMask,
                            kMemberDefaultGateway, kMemberUserName,
                            kMemberUserPassword,   kMemberFrequency};
const names kDnsMembers = {kMemberType, kMemberDns1, kMemberDns2, kMemberDomain};
const names kEnabledOnly = {kMemberEnabled};

std::string folded(const std::string& name) {
  std::string text;
  for (const char c : name) {
    if (c == ' ' || c == '\t') continue;
    text += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return text;
}

bool isKnown(const std::string& name, const names& known) {
  for (const char* member : known) {
    if (name == member) return true;
  }
  return false;
}

std::string placeIn(const std::string& place, const std::string& member) {
  if (place.empty()) return member;
  std::string path = place;
  path += '/';
  path += member;
  return path;
}

// Warns of the near misses among the members of `group` at `place`.
void checkGroup(const Json::Value& group, const std::string& place, const names& known,
                findingList& found) {
  if (!group.isObject()) return;
  for (const std::string& name : group.getMemberNames()) {
    if (isKnown(name, known)) continue;
    for (const char* member : known) {
      if (!missesOnlyByCaseOrBlanks(name, member)) continue;
      found.warning(placeIn(place, name), "is never read, the tool reads only " + quoted(member) +
                                              ", so this value is ignored; write " +
                                              quoted(member));
      break;
    }
  }
}

}  // namespace

bool missesOnlyByCaseOrBlanks(const std::string& name, const std::string& known) {
  return name != known && folded(name) == folded(known);
}

void checkMemberNames(const Json::Value& json, bool ethEnabled, bool wlanEnabled,
                      findingList& found) {
  checkGroup(json, "", kTopMembers, found);
  const Json::Value& network = json[kMemberNetworkSettings];
  const std::string networkPlace = kMemberNetworkSettings;
  checkGroup(network, networkPlace, kNetworkMembers, found);
  const Json::Value& interfaces = network[kMemberInterfaces];
  const std::string interfacesPlace = placeIn(networkPlace, kMemberInterfaces);
  checkGroup(interfaces, interfacesPlace, kInterfacesMembers, found);
  checkGroup(interfaces[kMemberEth], placeIn(interfacesPlace, kMemberEth),
             ethEnabled ? kEthMembers : kEnabledOnly, found);
  checkGroup(interfaces[kMemberWlan], placeIn(interfacesPlace, kMemberWlan),
             wlanEnabled ? kWlanMembers : kEnabledOnly, found);
  checkGroup(network[kMemberDns], placeIn(networkPlace, kMemberDns), kDnsMembers, found);
}

#include "check/address_rules.h"

#include <arpa/inet.h>

#include <cstdint>

#include "check/member_names.h"
#include "check/places.h"
#include "generate/dhcpcd_file.h"
#include "generate/setting_words.h"
#include "settings/config_members.h"

namespace {

// The address in host order, or false when `text` is not a dotted quad.
bool ipv4(const std::string& text, std::uint32_t& address) {
  in_addr parsed{};
  if (inet_pton(AF_INET, text.c_str(), &parsed) != 1) return false;
  address = ntohl(parsed.s_addr);
  return true;
}

std::string notAnAddress(const std::string& value, const char* what) {
  return (value.empty() ? std::string("is empty")
                        : quoted(value) + " is not a dotted-quad IPv4 address") +
         ": the interface never gets its static address; write its " + what + ", e.g. " +
         (what[0] == 'm' ? "255.255.255.0" : "192.168.1.10");
}

// The prefix of a contiguous mask, or -1.
int truePrefix(std::uint32_t mask) {
  int bits = 0;
  while (bits < 32 && (mask & (0x80000000U >> bits)) != 0) ++bits;
  const std::uint32_t contiguous = bits == 0 ? 0 : 0xFFFFFFFFU << (32 - bits);
  return mask == contiguous ? bits : -1;
}

// False (with a finding) for a mask that does not give the interface its subnet.
bool checkMask(const std::string& place, const std::string& mask, std::uint32_t value,
               findingList& found) {
  const int prefix = truePrefix(value);
  if (prefix < 0) {
    found.error(place, quoted(mask) +
                           " is not a contiguous mask: no subnet has it; write a mask of leading "
                           "ones, e.g. 255.255.255.0");
    return false;
  }
  const int written = prefixLength(mask);
  if (written == prefix) return true;
  found.error(place, quoted(mask) + " is /" + std::to_string(prefix) +
                         ", but the DHCP client file gets /" + std::to_string(written) +
                         " for it, so the interface gets the wrong subnet; only 255.0.0.0, "
                         "255.255.0.0 and 255.255.255.0 are written as they are");
  return false;
}

}  // namespace

void checkAddressing(const char* group, const std::string& type, const std::string& address,
                     const std::string& mask, const std::string& gateway, findingList& found) {
  if (missesOnlyByCaseOrBlanks(type, kTypeStatic)) {
    found.warning(interfaceMember(group, kMemberType),
                  quoted(type) + " is taken as DHCP and the static address is not used; write " +
                      quoted(kTypeStatic) + " for static addressing");
  }
  if (type != kTypeStatic) return;
  std::uint32_t addressValue = 0;
  std::uint32_t maskValue = 0;
  std::uint32_t gatewayValue = 0;
  const bool addressValid = ipv4(address, addressValue);
  const bool maskValid = ipv4(mask, maskValue);
  const bool gatewayValid = ipv4(gateway, gatewayValue);
  if (!addressValid)
    found.error(interfaceMember(group, kMemberIpAddress), notAnAddress(address, "address"));
  const std::string maskPlace = interfaceMember(group, kMemberNetworkMask);
  if (!maskValid) found.error(maskPlace, notAnAddress(mask, "mask"));
  // The subnet of a mask that is itself wrong says nothing about the gateway.
  const bool subnetKnown =
      maskValid && checkMask(maskPlace, mask, maskValue, found) && addressValid;
  if (!gatewayValid) {
    found.error(interfaceMember(group, kMemberDefaultGateway), notAnAddress(gateway, "gateway"));
  } else if (subnetKnown && (addressValue & maskValue) != (gatewayValue & maskValue)) {
    found.warning(interfaceMember(group, kMemberDefaultGateway),
                  quoted(gateway) + " is outside the subnet of " + quoted(address + "/" + mask) +
                      ": the default route through it cannot be set; write a gateway in the "
                      "interface's subnet");
  }
}

void checkDns(const dnsSettings& dns, findingList& found) {
  if (missesOnlyByCaseOrBlanks(dns.type, kTypeStatic)) {
    found.warning(dnsMember(kMemberType),
                  quoted(dns.type) + " is taken as DHCP and the servers here are not used; write " +
                      quoted(kTypeStatic) + " to use them");
  }
  if (dns.type != kTypeStatic) return;
  if (dns.dns1.empty() && dns.dns2.empty()) {
    found.warning(dnsMember(kMemberDns1),
                  "static DNS without a server: the device resolves no names; write the address "
                  "of a name server, or \"dhcp\" as the type");
    return;
  }
  const auto checkServer = [&found](const char* member, const std::string& server) {
    std::uint32_t unused = 0;
    if (server.empty() || ipv4(server, unused)) return;
    found.error(dnsMember(member), quoted(server) +
                                       " is not an IPv4 address: the resolver cannot use it; "
                                       "write the dotted-quad address of a name server");
  };
  checkServer(kMemberDns1, dns.dns1);
  checkServer(kMemberDns2, dns.dns2);
}

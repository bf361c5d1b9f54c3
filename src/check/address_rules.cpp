#include "check/address_rules.h"

#include <arpa/inet.h>

#include <cstdint>

#include "check/member_names.h"
#include "check/places.h"
#include "generate/dhcpcd_file.h"
#include "generate/setting_words.h"
#include "settings/config_members.h"

namespace {

constexpr int kAddressBits = 32;
constexpr std::size_t kMaxPrefixDigits = 2;

// The address in host order, or false when `text` is not a dotted quad.
bool ipv4(const std::string& text, std::uint32_t& address) {
  in_addr parsed{};
  if (inet_pton(AF_INET, text.c_str(), &parsed) != 1) return false;
  address = ntohl(parsed.s_addr);
  return true;
}

std::string unusable(const std::string& value, const char* form, const char* what,
                     const char* example) {
  return (value.empty() ? std::string("is empty") : quoted(value) + " is not " + form) +
         ": the interface never gets its static address; write its " + what + ", e.g. " + example;
}

std::uint32_t maskOf(int prefix) {
  return prefix == 0 ? 0 : 0xFFFFFFFFU << (kAddressBits - prefix);
}

// A prefix length written alone, as in "24"; -1 for anything else.
int barePrefix(const std::string& text) {
  if (text.empty() || text.size() > kMaxPrefixDigits ||
      text.find_first_not_of("0123456789") != std::string::npos) {
    return -1;
  }
  const int bits = std::stoi(text);
  return bits <= kAddressBits ? bits : -1;
}

// The prefix of a contiguous mask, or -1.
int truePrefix(std::uint32_t mask) {
  int bits = 0;
  while (bits < kAddressBits && (mask & (0x80000000U >> bits)) != 0) ++bits;
  return mask == maskOf(bits) ? bits : -1;
}

// The prefix ifupdown gives the interface for `mask`, which it hands to ip as a dotted quad or a
// prefix length; -1 (with a finding) for a mask ip refuses, so that ifup fails.
int checkMask(const std::string& place, const std::string& mask, findingList& found) {
  std::uint32_t value = 0;
  int prefix = barePrefix(mask);
  if (prefix < 0 && !ipv4(mask, value)) {
    found.error(place,
                unusable(mask, "a dotted-quad mask or a prefix length", "mask", "255.255.255.0"));
    return -1;
  }
  if (prefix < 0) prefix = truePrefix(value);
  if (prefix < 0) {
    found.error(place, quoted(mask) +
                           " is not a contiguous mask: no subnet has it; write a mask of leading "
                           "ones, e.g. 255.255.255.0");
    return -1;
  }
  // Only the DHCP client file takes the mask through its own prefix rule.
  const int written = prefixLength(mask);
  if (written == prefix) return prefix;
  found.warning(place, quoted(mask) + " is /" + std::to_string(prefix) +
                           " and ifupdown sets it so, but the DHCP client file gets /" +
                           std::to_string(written) +
                           " for it: where dhcpcd runs as the system's daemon " +
                           (written == 0 ? "it refuses the address and asks DHCP instead"
                                         : "the interface gets the wrong subnet") +
                           "; only 255.0.0.0, 255.255.0.0 and 255.255.255.0 are written as they "
                           "are");
  return prefix;
}

// False (with a finding) for an address ip refuses; ifupdown drops a "/prefix" at its end for the
// mask, but dhcpcd then reads neither.
bool checkAddress(const std::string& place, const std::string& address, std::uint32_t& value,
                  findingList& found) {
  const std::size_t slash = address.find('/');
  if ((slash != std::string::npos && barePrefix(address.substr(slash + 1)) < 0) ||
      !ipv4(address.substr(0, slash), value)) {
    found.error(place, unusable(address, "a dotted-quad IPv4 address", "address", "192.168.1.10"));
    return false;
  }
  if (slash != std::string::npos) {
    found.warning(place, quoted(address) +
                             " ends in a prefix: ifupdown takes the network mask instead, and "
                             "where dhcpcd runs as the system's daemon it refuses the address and "
                             "asks DHCP; write the address without it");
  }
  return true;
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
  std::uint32_t gatewayValue = 0;
  const bool addressValid =
      checkAddress(interfaceMember(group, kMemberIpAddress), address, addressValue, found);
  const int prefix = checkMask(interfaceMember(group, kMemberNetworkMask), mask, found);
  const std::uint32_t maskValue = prefix < 0 ? 0 : maskOf(prefix);
  const std::string gatewayPlace = interfaceMember(group, kMemberDefaultGateway);
  if (!ipv4(gateway, gatewayValue)) {
    found.error(gatewayPlace,
                unusable(gateway, "a dotted-quad IPv4 address", "gateway", "192.168.1.1"));
  } else if (addressValid && prefix >= 0 &&
             (addressValue & maskValue) != (gatewayValue & maskValue)) {
    found.warning(gatewayPlace,
                  quoted(gateway) + " is outside the subnet of " +
                      quoted(address.substr(0, address.find('/')) + "/" + mask) +
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
  // The resolver takes an IPv4 or an IPv6 address on a nameserver line and ignores anything else.
  const auto checkServer = [&found](const char* member, const std::string& server) {
    std::uint32_t unused = 0;
    in6_addr unused6{};
    if (server.empty() || ipv4(server, unused) ||
        inet_pton(AF_INET6, server.c_str(), &unused6) == 1) {
      return;
    }
    found.error(dnsMember(member), quoted(server) +
                                       " is not an IP address: the resolver ignores it; write the "
                                       "address of a name server");
  };
  checkServer(kMemberDns1, dns.dns1);
  checkServer(kMemberDns2, dns.dns2);
}

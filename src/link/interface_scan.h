#pragma once

#include <string>
#include <utility>
#include <vector>

// Pure readings of ifconfig, route -n, the interfaces file and ipsec output, piece by piece.

// What the ifconfig output of one interface says.
struct InterfaceSighting {
  std::string inetLine;  // the last piece holding "inet "
  bool addressSeen = false;
  bool named = false;  // some piece names the interface
};

InterfaceSighting sightInterface(const std::vector<std::string>& pieces, const std::string& name);

// "static" when the last piece holding `searchLine` says static and not dhcp; "dhcp" otherwise,
// also when no piece holds it.
std::string configuredType(const std::vector<std::string>& pieces, const std::string& searchLine);

// Address and netmask (words 2 and 4) of an "inet " line once its newlines and its first 8
// characters (ifconfig's indentation) are gone. Too few words throw std::out_of_range.
std::pair<std::string, std::string> addressAndNetmask(std::string inetLine);

// The Gateway column of the last route piece naming `name` with the UG flags; empty when there
// is none. Too few words throw std::out_of_range.
std::string interfaceGateway(const std::vector<std::string>& routePieces, const std::string& name);

// True for a route piece of a default route through a gateway.
bool isDefaultRoute(const std::string& piece);

// Word 2 of `routeLine` (the Gateway column), or empty for an empty line. Too few words throw
// std::out_of_range.
std::string gatewayColumn(const std::string& routeLine);

// The tunnel address from the last piece of the ipsec address pipeline, blanks and newlines
// removed; empty when the pipeline printed nothing.
std::string ipsecAddress(const std::vector<std::string>& pipelinePieces);

#pragma once

#include <string>

// Large utility outputs for the parser benchmarks, built from the recorded fixtures: the real
// line formats are kept and every entry is varied (names, addresses), so no two are identical.

// The default route closing every generated route table, and the ifconfig address of eth0.
constexpr const char* kGeneratedDefaultGateway = "192.168.1.254";
constexpr const char* kGeneratedEth0Address = "10.0.0.5";

// The text of tests/fixtures/<relativePath>; an unreadable fixture ends the run.
std::string fixtureText(const std::string& relativePath);

// "iwlist wlan0 scan" output with `cells` cells, cycling through the cells of the recorded scans
// (several drivers), each renumbered, with its own address and, when it has a name, its own
// ESSID.
std::string scanOutput(int cells);

// "route -n" output: the two heading lines, then `routes` routes. Host, network and gateway
// routes on eth0, wlan0 and tun0 alternate; the one default route (through
// kGeneratedDefaultGateway on eth0) is the last, so a reader looking for it reads everything.
std::string routeTable(int routes);

// "ifconfig" output of `interfaces` interfaces: recorded eth, wlan and tun blocks renamed and
// readdressed, none of them wlan0, and the recorded eth0 (kGeneratedEth0Address) last.
std::string ifconfigOutput(int interfaces);

// "ip link show" output of `interfaces` links: renamed recorded links, the associated wlan0 last.
std::string ipLinkOutput(int interfaces);

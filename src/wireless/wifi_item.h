#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"

// One access point of a scan.
class wifiItem {
 public:
  std::string ssid;
  std::string authentication;  // "PSK", "802.1x", ...; "NONE" for an open network
  int signalStrength = 0;      // percent
  std::string encryption;      // "on" or "off"
  std::string pairwise;
  std::string encryptionVer;  // "WPA2" or "WPA"
  std::string frequency;      // GHz, without the unit
  int channel = 0;

  // One entry without a line end: aligned label/value pairs in console mode, a JSON object in
  // application mode, nothing otherwise.
  void printItem(UserMode mode, std::ostream& out = std::cout) const;
};

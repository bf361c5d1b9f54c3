#pragma once

#include <string>

// Which interface a parameters report is about; the values are fixed by the front end.
enum UserInterfaces : int {
  wlan0Interface = 0,
  eth0Interface = 1,
  tun0Interface = 2,
  ppp0Interface = 3
};

// The parameters of the interface last reported on.
class interfaceStatus {
 public:
  std::string ipAddress;
  std::string netmaskAddress;
  std::string gatewayAddress;
  std::string type;  // "static" or "dhcp"
};

// The report's values for the run; empty until a report fills them.
extern interfaceStatus interfaceValues;

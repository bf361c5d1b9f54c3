#pragma once

#include <string>

#include "generate/supplicant_services.h"
#include "settings/network_settings.h"

// NetworkManager keyfiles for the two interfaces: the same settings the ifupdown files carry, in
// the form NetworkManager reads from /etc/NetworkManager/system-connections.

// The profiles' names, as nmcli knows them.
extern const char* const kWiredProfile;
extern const char* const kWirelessProfile;
// The keyfiles they are kept in.
extern const char* const kWiredProfilePath;
extern const char* const kWirelessProfilePath;

// The addressing a keyfile asks for, as the parameter reports name it: "static" for a manual
// IPv4 method, else "dhcp".
std::string profileAddressingType(const std::string& keyfile);

// The prefix length of an IPv4 mask, counted right (unlike the DHCP client file's): the leading one
// bits of a dotted quad, or a length written as a number up to 32; any other text is returned as it
// stands, for NetworkManager to refuse.
std::string profilePrefix(const std::string& mask);

// A value as a keyfile line carries it: backslashes, line breaks, tabs and blanks at either end
// escaped, so that it reads back exactly.
std::string keyfileText(const std::string& value);

// A network name as a keyfile carries it: plain when it reads back unambiguously, else as the
// list of its byte values.
std::string keyfileSsid(const std::string& ssid);

// Whether a wireless profile can be written at all: NetworkManager holds no Wi-Fi profile
// without a network name, so a disabled wlan0 without one has none.
bool wantsWirelessProfile(const wlanSettings& wlan);

// The whole keyfile of eth0. `openWired` leaves 802.1X out whatever the security; credentials
// typed on the command line replace the stored ones for PEAP and TTLS as they do in the wired
// supplicant file. Passwords are written in clear: NetworkManager takes no hash.
std::string renderWiredProfile(const ethSettings& eth, const dnsSettings& dns, bool openWired,
                               bool passThrough, const passThroughCredentials& credentials,
                               SupplicantServices& services);

// The whole keyfile of wlan0.
std::string renderWirelessProfile(const wlanSettings& wlan, const dnsSettings& dns,
                                  SupplicantServices& services);

#pragma once

#include <string>

// The wireless interface wlan0, as config.json describes it. Password fields hold the stored
// (enciphered) form.
class wlanSettings {
 public:
  bool enabled = false;
  std::string type;
  std::string ssid;
  std::string passphrase;
  std::string advancedSecurity;
  std::string security;
  std::string authenticationMethod;
  std::string caCertificate;
  std::string pkcs12Certificate;
  std::string pkcs12Password;
  std::string encryption;
  bool hiddenSsid = false;
  std::string userName;
  std::string userPassword;
  std::string ipAddress;
  std::string networkMask;
  std::string defaultGateway;
  std::string frequency;
};

// The wired interface eth0.
class ethSettings {
 public:
  bool enabled = false;
  std::string type;
  std::string ipAddress;
  std::string networkMask;
  std::string defaultGateway;
  std::string security;
  std::string authenticationMethod;
  std::string caCertificate;
  std::string pkcs12Certificate;
  std::string pkcs12Password;
  std::string userName;
  std::string userPassword;
  bool fallback = false;
};

class dnsSettings {
 public:
  std::string type;
  std::string dns1;
  std::string dns2;
  std::string domain;
};

// Everything the network files are generated from.
class networkSettings {
 public:
  wlanSettings wlan;
  ethSettings eth;
  dnsSettings dns;
};

// 802.1X credentials for the wired port typed on the command line; plain text.
class passThroughCredentials {
 public:
  std::string userName;
  std::string userPassword;
};

// The settings of the run, filled from config.json.
extern networkSettings settingsTab;
// config.json asks for the wired credentials of the command line ("ask for credentials").
extern bool ethernetPassThrough;
// Positions 4 and 5 of a set-config command line.
extern passThroughCredentials ethernetPassThroughCredentials;
// set-open-wired-config: the wired 802.1X lines of the interfaces file stay commented out.
extern bool openWiredConfig;

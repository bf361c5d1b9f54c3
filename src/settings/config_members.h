#pragma once

// The member names of config.json, exactly as the reader looks them up (case and blanks count).

// The top level and the groups.
inline constexpr char kMemberEncoding[] = "encoding";
inline constexpr char kMemberNetworkSettings[] = "network settings";
inline constexpr char kMemberInterfaces[] = "interfaces";
inline constexpr char kMemberEth[] = "eth";
inline constexpr char kMemberWlan[] = "wlan";
inline constexpr char kMemberDns[] = "DNS";

// Members of the interface groups.
inline constexpr char kMemberEnabled[] = "enabled";
inline constexpr char kMemberType[] = "type";
inline constexpr char kMemberIpAddress[] = "IP address";
inline constexpr char kMemberNetworkMask[] = "network mask";
inline constexpr char kMemberDefaultGateway[] = "default gateway";
inline constexpr char kMemberSecurity[] = "security";
inline constexpr char kMemberAuthenticationMethod[] = "authentication method";
inline constexpr char kMemberCaCertificate[] = "ca certificate";
inline constexpr char kMemberPkcs12Certificate[] = "pkcs12 certificate";
inline constexpr char kMemberPkcs12Password[] = "pkcs12 password";
inline constexpr char kMemberUserName[] = "user name";
inline constexpr char kMemberUserPassword[] = "user password";
inline constexpr char kMemberFallback[] = "fallback";
inline constexpr char kMemberAskForCredentials[] = "ask for credentials";
inline constexpr char kMemberSsid[] = "ssid";
inline constexpr char kMemberAdvancedSecurity[] = "advanced security";
inline constexpr char kMemberEncryption[] = "encryption";
inline constexpr char kMemberHiddenSsid[] = "hidden ssid";
inline constexpr char kMemberPassphrase[] = "passphrase";
inline constexpr char kMemberFrequency[] = "frequency";

// Members of the DNS group (its "type" is kMemberType).
inline constexpr char kMemberDns1[] = "dns1";
inline constexpr char kMemberDns2[] = "dns2";
inline constexpr char kMemberDomain[] = "domain";

#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"
#include "generate/supplicant_services.h"
#include "settings/network_settings.h"

extern const char* const kWpaWiredConfPath;

// The whole wpa_supplicant_wired.conf for `eth`. With `passThrough`, PEAP and TTLS take the
// identity and the (plain) password of `credentials` instead of the stored ones; TLS always uses
// the stored user name.
std::string renderWpaWiredConf(const ethSettings& eth, bool passThrough,
                               const passThroughCredentials& credentials,
                               SupplicantServices& services);

// Writes renderWpaWiredConf(settingsTab.eth, ethernetPassThrough,
// ethernetPassThroughCredentials) with the device's services to kWpaWiredConfPath, readable by
// root only. A file that cannot be opened, or a stored secret that does not decrypt, ends the
// run with status 1.
void generateWpaWiredConf(UserMode mode, std::ostream& out = std::cout,
                          std::ostream& err = std::cerr);

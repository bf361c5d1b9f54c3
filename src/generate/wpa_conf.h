#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"
#include "generate/supplicant_services.h"
#include "settings/network_settings.h"

extern const char* const kWpaConfPath;

// The whole wpa_supplicant.conf for `wlan`: an empty network block when wlan0 is disabled, else
// the lines its security, method, encryption and frequency choose. Secrets, keys and frequency
// lists come from `services`, called in the order of the lines.
std::string renderWpaConf(const wlanSettings& wlan, SupplicantServices& services);

// Writes renderWpaConf(settingsTab.wlan) with the device's services to kWpaConfPath, readable
// by root only. A file that cannot be opened, or a stored secret that does not decrypt, ends the
// run with status 1.
void generateWpaConf(UserMode mode, std::ostream& out = std::cout, std::ostream& err = std::cerr);

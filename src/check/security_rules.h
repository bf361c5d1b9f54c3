#pragma once

#include "check/certificate_store.h"
#include "check/finding.h"
#include "settings/network_settings.h"

// The network name, security, frequency, pass phrase and enterprise settings of an enabled
// wireless interface, as the wireless supplicant file takes them.
void checkWirelessSecurity(const wlanSettings& wlan, const certificateStore& store,
                           findingList& found);

// The security and enterprise settings of an enabled wired interface, as the wired supplicant
// file takes them; with `passThrough` PEAP and TTLS take their credentials from the command line.
void checkWiredSecurity(const ethSettings& eth, bool passThrough, const certificateStore& store,
                        findingList& found);

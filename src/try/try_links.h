#pragma once

#include <string>
#include <vector>

#include "link/autoconnect.h"

// Which of eth0 and wlan0 are up now, as the tool's probes see it (ifconfig lists them), or on
// NetworkManager whose profile is active.
LinkWishes linksUpNow();

// Takes eth0 and wlan0 down as disconnect-ethernet and disconnect-wifi do, while the files that
// brought them up are still in place (ifdown deconfigures what its file says).
void takeLinksDown();

// Brings eth0, then wlan0, up or down as `wishes` say, as autoconnect does; the statuses that
// count and the verdicts, as the log words them.
std::vector<std::string> bringLinks(const LinkWishes& wishes);

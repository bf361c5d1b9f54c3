#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"

// Pure readings of "iwconfig wlan0".

// The network name on the line holding "ESSID": quotes dropped, runs of blanks inside the name
// shrunk to one, and a trailing nickname cut off.
std::string accessPointName(std::string essidLine);

// The signal strength in percent on the line holding "Link Quality", as decimal text; a line
// with neither a dBm nor a quality reading gives "0".
std::string accessPointSignal(std::string qualityLine);

// Reports whether wlan0 is associated and, if so, the access point's name (and, in application
// mode, its signal strength).
void checkWirelessPoint(UserMode mode, std::ostream& out = std::cout);

#pragma once

#include <iostream>
#include <list>

#include "common/user_mode.h"
#include "wireless/wifi_item.h"

// The access points of the run's scan.
extern std::list<wifiItem> wifiList;

// Raises the radio, scans once, puts the radio back down if it was found down, appends the
// access points worth offering to `list` in scan order and prints the whole of `list`.
void getWifiList(std::list<wifiItem>& list, UserMode mode, std::ostream& out = std::cout);

// "Wifi list:", one entry a line and "Get wifi list done." in console mode; a JSON array, one
// entry a line, in application mode (also when empty); nothing otherwise.
void printWifiList(const std::list<wifiItem>& list, UserMode mode, std::ostream& out);

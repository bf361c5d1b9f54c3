#pragma once

#include <iostream>

#include "common/user_mode.h"
#include "settings/network_settings.h"

// Lists `settings` one labelled value a line, with the security-dependent lines of each
// interface; stored passwords appear in their stored form, bools as 1 and 0.
void printSettings(const networkSettings& settings, std::ostream& out);

// printSettings of settingsTab in console mode; nothing in any other mode.
void printConfigJson(UserMode mode, std::ostream& out = std::cout);

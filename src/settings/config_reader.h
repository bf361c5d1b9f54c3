#pragma once

#include <json/json.h>

#include <iostream>
#include <string>

#include "common/user_mode.h"
#include "settings/network_settings.h"

// What config.json says, before it becomes the settings of the run.
struct configSettings {
  networkSettings settings;
  bool passThrough = false;
};

// Copies every setting out of a parsed config.json; missing members read as "" and false.
// Throws Json::Exception when a member cannot be converted or a group is not an object.
configSettings settingsFromJson(const Json::Value& json);

// Parses config.json at `path` into root, then fills settingsTab and ethernetPassThrough.
// A file that cannot be read, parsed or converted ends the run with status 1 (console mode: one
// line on `err`).
void initConfig(std::string path, UserMode mode, std::ostream& out = std::cout,
                std::ostream& err = std::cerr);

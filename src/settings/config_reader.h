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

// A member of config.json that the reader cannot take as its setting: a group that is not an
// object, a string member holding an object or array, a bool member holding a string, object or
// array.
class settingTypeError : public Json::Exception {
 public:
  static constexpr const char* kObject = "an object";
  static constexpr const char* kString = "a string";
  static constexpr const char* kBool = "true or false";

  settingTypeError(std::string place, const char* expected);

  // The member names from the top, joined by "/"; empty for the top level.
  const std::string& place() const { return place_; }
  // What the member must be: kObject, kString or kBool.
  const char* expected() const { return expected_; }

 private:
  std::string place_;
  const char* expected_;
};

// Copies every setting out of a parsed config.json; missing members read as "" and false.
// Throws settingTypeError for the first member, in reading order, that cannot be converted.
configSettings settingsFromJson(const Json::Value& json);

// Parses config.json at `path` into root, then fills settingsTab and ethernetPassThrough.
// A file that cannot be read, parsed or converted ends the run with status 1 (console mode: one
// line on `err`).
void initConfig(std::string path, UserMode mode, std::ostream& out = std::cout,
                std::ostream& err = std::cerr);

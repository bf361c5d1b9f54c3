#pragma once

#include <json/json.h>

#include <iostream>
#include <optional>
#include <string>

#include "common/user_mode.h"

// What config.json asks of the two interfaces.
struct LinkWishes {
  bool wired = false;
  bool wireless = false;
};

// The "enabled" members of the eth and wlan interfaces in `document`; a missing or non-boolean
// member reads as false. Empty when the document's shape makes the JSON library throw (a member
// looked up in a text or an array, an encoding that is not a text).
std::optional<LinkWishes> linkWishesOf(const Json::Value& document);

// What reaching the wishes gave: whether each interface got to its wanted state.
struct LinkVerdicts {
  bool wired = false;
  bool wireless = false;
};

// Brings eth0, then wlan0, up or down as `wishes` say, whatever happens to the first, announcing
// each in console mode; a take-down always counts as reached. The statuses that count and the
// verdicts go into the run's log notes.
LinkVerdicts reachLinkWishes(const LinkWishes& wishes, UserMode mode, std::ostream& out);

// Parses config.json at `path` on its own and brings eth0, then wlan0, up or down as it asks,
// reporting each in console mode. True when both reached the wanted state. A file that cannot
// be read or understood ends the run with status 1.
bool autoconnect(const std::string& path, UserMode mode, std::ostream& out = std::cout,
                 std::ostream& err = std::cerr);

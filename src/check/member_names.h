#pragma once

#include <json/json.h>

#include <string>

#include "check/finding.h"

// Whether `name` differs from `known` only by the case of ASCII letters or by blanks (spaces and
// tabs), without being equal to it.
bool missesOnlyByCaseOrBlanks(const std::string& name, const std::string& known);

// Warns of every member that the reader never reads but whose name misses a member it reads only
// by case or blanks. In a disabled interface group only a miss of "enabled" counts.
void checkMemberNames(const Json::Value& json, bool ethEnabled, bool wlanEnabled,
                      findingList& found);

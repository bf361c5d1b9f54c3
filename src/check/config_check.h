#pragma once

#include <json/json.h>

#include <vector>

#include "check/certificate_store.h"
#include "check/finding.h"

// Every finding for a parsed config.json whose top level is an object, read by the tool's own
// reader: a member the reader cannot convert is the only finding (the tool stops there);
// otherwise the settings the tool would use are checked, then the members whose names miss a
// known one by case or blanks.
std::vector<finding> checkConfig(const Json::Value& json, const certificateStore& store);

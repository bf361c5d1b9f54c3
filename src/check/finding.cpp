#include "check/finding.h"

#include <json/json.h>

std::string quoted(const std::string& text) {
  return Json::valueToQuotedString(text.c_str());
}

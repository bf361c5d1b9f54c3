// Any bytes as config.json: the reader's parse, the copy into the settings record and the
// wishes autoconnect reads. A throw from the JSON library must stay inside the guarded calls
// (each turns it into the parse-failure path); anything escaping is a finding.
#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

#include "link/autoconnect.h"
#include "settings/config_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  Json::Reader reader;
  Json::Value document;
  bool parsed = false;
  try {
    parsed = reader.parse(text, document, false);
  } catch (const std::exception&) {
    return 0;  // nesting beyond the reader's limit: the parse-failure path
  }
  if (!parsed) return 0;
  try {
    const configSettings settings = settingsFromJson(document);
    if (settings.settings.dns.type.size() > size) __builtin_trap();
  } catch (const Json::Exception&) {
    // a member of the wrong shape: the parse-failure path
  }
  linkWishesOf(document);
  return 0;
}

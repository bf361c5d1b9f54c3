#include "check/config_check.h"

#include "check/address_rules.h"
#include "check/member_names.h"
#include "check/security_rules.h"
#include "settings/config_members.h"
#include "settings/config_reader.h"

std::vector<finding> checkConfig(const Json::Value& json, const certificateStore& store) {
  findingList found;
  configSettings read;
  try {
    read = settingsFromJson(json);
  } catch (const settingTypeError& e) {
    found.error(e.place(), std::string("is not ") + e.expected() +
                               ": the tool stops reading config.json and writes no file; write " +
                               e.expected() + " here");
    return found.items();
  }
  const networkSettings& settings = read.settings;
  if (settings.eth.enabled) {
    checkWiredSecurity(settings.eth, read.passThrough, store, found);
    checkAddressing(kMemberEth, settings.eth.type, settings.eth.ipAddress, settings.eth.networkMask,
                    settings.eth.defaultGateway, found);
  }
  if (settings.wlan.enabled) {
    checkWirelessSecurity(settings.wlan, store, found);
    checkAddressing(kMemberWlan, settings.wlan.type, settings.wlan.ipAddress,
                    settings.wlan.networkMask, settings.wlan.defaultGateway, found);
  }
  checkDns(settings.dns, found);
  checkMemberNames(json, settings.eth.enabled, settings.wlan.enabled, found);
  return found.items();
}

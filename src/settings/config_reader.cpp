#include "settings/config_reader.h"

#include <exception>
#include <utility>

#include "common/run_log.h"
#include "settings/config_file.h"
#include "settings/config_members.h"

namespace {

constexpr const char* kStartReading = "Start reading config.json file...";
constexpr const char* kReadingComplete = "Reading config.json file complete.";
constexpr const char* kDefaultEncoding = "UTF-8";

[[noreturn]] void parsingFailed(const std::string& path, UserMode mode, std::ostream& err) {
  if (mode == consoleMode) err << "Error: Parsing " << path << " file failed.\n";
  failRun("config.json cannot be read or parsed");
}

// One object of config.json and its place, so that a member the library cannot convert is
// reported where it stands.
class group {
 public:
  group(const Json::Value& value, std::string place) : value_(value), place_(std::move(place)) {}

  group member(const char* name) const { return group(lookUp(name), placeOf(name)); }

  std::string text(const char* name) const {
    return convert<std::string>(name, settingTypeError::kString,
                                [](const Json::Value& v) { return v.asString(); });
  }

  bool flag(const char* name) const {
    return convert<bool>(name, settingTypeError::kBool,
                         [](const Json::Value& v) { return v.asBool(); });
  }

 private:
  const Json::Value& lookUp(const char* name) const {
    try {
      return value_[name];
    } catch (const Json::Exception&) {
      throw settingTypeError(place_, settingTypeError::kObject);
    }
  }

  std::string placeOf(const char* name) const {
    return place_.empty() ? name : place_ + "/" + name;
  }

  template <typename Result, typename Convert>
  Result convert(const char* name, const char* expected, Convert how) const {
    const Json::Value& value = lookUp(name);
    try {
      return how(value);
    } catch (const Json::Exception&) {
      throw settingTypeError(placeOf(name), expected);
    }
  }

  const Json::Value& value_;
  std::string place_;
};

void copyEth(const group& eth, configSettings& read) {
  ethSettings& s = read.settings.eth;
  s.enabled = eth.flag(kMemberEnabled);
  s.type = eth.text(kMemberType);
  s.ipAddress = eth.text(kMemberIpAddress);
  s.networkMask = eth.text(kMemberNetworkMask);
  s.defaultGateway = eth.text(kMemberDefaultGateway);
  s.security = eth.text(kMemberSecurity);
  s.authenticationMethod = eth.text(kMemberAuthenticationMethod);
  s.caCertificate = eth.text(kMemberCaCertificate);
  s.pkcs12Certificate = eth.text(kMemberPkcs12Certificate);
  s.pkcs12Password = eth.text(kMemberPkcs12Password);
  s.userName = eth.text(kMemberUserName);
  s.userPassword = eth.text(kMemberUserPassword);
  s.fallback = eth.flag(kMemberFallback);
  read.passThrough = eth.flag(kMemberAskForCredentials);
}

void copyWlan(const group& wlan, wlanSettings& s) {
  s.enabled = wlan.flag(kMemberEnabled);
  s.type = wlan.text(kMemberType);
  s.ssid = wlan.text(kMemberSsid);
  s.advancedSecurity = wlan.text(kMemberAdvancedSecurity);
  s.security = wlan.text(kMemberSecurity);
  s.authenticationMethod = wlan.text(kMemberAuthenticationMethod);
  s.caCertificate = wlan.text(kMemberCaCertificate);
  s.pkcs12Certificate = wlan.text(kMemberPkcs12Certificate);
  s.pkcs12Password = wlan.text(kMemberPkcs12Password);
  s.encryption = wlan.text(kMemberEncryption);
  s.hiddenSsid = wlan.flag(kMemberHiddenSsid);
  s.passphrase = wlan.text(kMemberPassphrase);
  s.ipAddress = wlan.text(kMemberIpAddress);
  s.networkMask = wlan.text(kMemberNetworkMask);
  s.defaultGateway = wlan.text(kMemberDefaultGateway);
  s.userName = wlan.text(kMemberUserName);
  s.userPassword = wlan.text(kMemberUserPassword);
  s.frequency = wlan.text(kMemberFrequency);
}

void copyDns(const group& dns, dnsSettings& s) {
  s.type = dns.text(kMemberType);
  s.dns1 = dns.text(kMemberDns1);
  s.dns2 = dns.text(kMemberDns2);
  s.domain = dns.text(kMemberDomain);
}

}  // namespace

settingTypeError::settingTypeError(std::string place, const char* expected)
    : Json::Exception((place.empty() ? std::string("config.json") : place) + " is not " + expected),
      place_(std::move(place)),
      expected_(expected) {}

configSettings settingsFromJson(const Json::Value& json) {
  const group top(json, "");
  // Looked up though unused: a top-level value that is not an object fails here already.
  try {
    json.get(kMemberEncoding, kDefaultEncoding).asString();
  } catch (const Json::Exception&) {
    throw settingTypeError(json.isObject() ? kMemberEncoding : "",
                           json.isObject() ? settingTypeError::kString : settingTypeError::kObject);
  }
  const group network = top.member(kMemberNetworkSettings);
  const group interfaces = network.member(kMemberInterfaces);
  configSettings read;
  copyEth(interfaces.member(kMemberEth), read);
  copyWlan(interfaces.member(kMemberWlan), read.settings.wlan);
  copyDns(network.member(kMemberDns), read.settings.dns);
  return read;
}

void initConfig(std::string path, UserMode mode, std::ostream& out, std::ostream& err) {
  if (mode == consoleMode) out << kStartReading << std::endl;
  if (!parseConfigJson(path)) parsingFailed(path, mode, err);
  try {
    const configSettings read = settingsFromJson(root);
    settingsTab = read.settings;
    ethernetPassThrough = read.passThrough;
  } catch (const std::exception&) {
    // A member of a type the library cannot convert: the file cannot be read as settings.
    parsingFailed(path, mode, err);
  }
  if (mode == consoleMode) out << kReadingComplete << std::endl;
}

#include "settings/config_reader.h"

#include <exception>

#include "common/run_log.h"
#include "settings/config_file.h"

namespace {

constexpr const char* kStartReading = "Start reading config.json file...";
constexpr const char* kReadingComplete = "Reading config.json file complete.";
constexpr const char* kDefaultEncoding = "UTF-8";

[[noreturn]] void parsingFailed(const std::string& path, UserMode mode, std::ostream& err) {
  if (mode == consoleMode) err << "Error: Parsing " << path << " file failed.\n";
  failRun("config.json cannot be read or parsed");
}

void copyEth(const Json::Value& eth, configSettings& read) {
  ethSettings& s = read.settings.eth;
  s.enabled = eth["enabled"].asBool();
  s.type = eth["type"].asString();
  s.ipAddress = eth["IP address"].asString();
  s.networkMask = eth["network mask"].asString();
  s.defaultGateway = eth["default gateway"].asString();
  s.security = eth["security"].asString();
  s.authenticationMethod = eth["authentication method"].asString();
  s.caCertificate = eth["ca certificate"].asString();
  s.pkcs12Certificate = eth["pkcs12 certificate"].asString();
  s.pkcs12Password = eth["pkcs12 password"].asString();
  s.userName = eth["user name"].asString();
  s.userPassword = eth["user password"].asString();
  s.fallback = eth["fallback"].asBool();
  read.passThrough = eth["ask for credentials"].asBool();
}

void copyWlan(const Json::Value& wlan, wlanSettings& s) {
  s.enabled = wlan["enabled"].asBool();
  s.type = wlan["type"].asString();
  s.ssid = wlan["ssid"].asString();
  s.advancedSecurity = wlan["advanced security"].asString();
  s.security = wlan["security"].asString();
  s.authenticationMethod = wlan["authentication method"].asString();
  s.caCertificate = wlan["ca certificate"].asString();
  s.pkcs12Certificate = wlan["pkcs12 certificate"].asString();
  s.pkcs12Password = wlan["pkcs12 password"].asString();
  s.encryption = wlan["encryption"].asString();
  s.hiddenSsid = wlan["hidden ssid"].asBool();
  s.passphrase = wlan["passphrase"].asString();
  s.ipAddress = wlan["IP address"].asString();
  s.networkMask = wlan["network mask"].asString();
  s.defaultGateway = wlan["default gateway"].asString();
  s.userName = wlan["user name"].asString();
  s.userPassword = wlan["user password"].asString();
  s.frequency = wlan["frequency"].asString();
}

void copyDns(const Json::Value& dns, dnsSettings& s) {
  s.type = dns["type"].asString();
  s.dns1 = dns["dns1"].asString();
  s.dns2 = dns["dns2"].asString();
  s.domain = dns["domain"].asString();
}

}  // namespace

configSettings settingsFromJson(const Json::Value& json) {
  // Looked up though unused: a top-level value that is not an object fails here already.
  json.get("encoding", kDefaultEncoding).asString();
  const Json::Value& network = json["network settings"];
  const Json::Value& interfaces = network["interfaces"];
  configSettings read;
  copyEth(interfaces["eth"], read);
  copyWlan(interfaces["wlan"], read.settings.wlan);
  copyDns(network["DNS"], read.settings.dns);
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

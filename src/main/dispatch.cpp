#include "main/dispatch.h"

#include <functional>
#include <utility>

#include "common/back_end.h"
#include "common/run_log.h"
#include "generate/generate_configs.h"
#include "generate/writer_lock.h"
#include "link/autoconnect.h"
#include "link/interface_values.h"
#include "link/probes.h"
#include "link/switching.h"
#include "main/front_end.h"
#include "main/usage.h"
#include "settings/config_reader.h"
#include "settings/network_settings.h"
#include "settings/settings_dump.h"
#include "wireless/access_point.h"
#include "wireless/wifi_list.h"

namespace {

using Operation = std::function<void(const std::vector<std::string>& args)>;

constexpr std::size_t kPathPosition = 3;
constexpr std::size_t kUserNamePosition = 4;
constexpr std::size_t kPasswordPosition = 5;

// Commands that work on config.json end the run when its path is missing.
Operation withConfigPath(const Operation& operation) {
  return [operation](const std::vector<std::string>& args) {
    if (args.size() <= kPathPosition) Usage("error config.json", outputMode);
    noteConfigPath(args[kPathPosition]);
    operation(args);
  };
}

// Commands that change something leave a line in the system log when they complete, naming the
// NetworkManager back end where it is the one; reading commands run many times a minute and
// leave none, and never look for the back end.
Operation logged(const Operation& operation) {
  return [operation](const std::vector<std::string>& args) {
    noteRunBackEnd();
    operation(args);
    logRunCompleted();
  };
}

// Reads config.json, writes the five network files and lists what was read.
void regenerateFiles(const std::vector<std::string>& args) {
  lockNetworkFiles();
  initConfig(args[kPathPosition], outputMode);
  generateConfigs(outputMode);
  printConfigJson(outputMode);
}

void setConfig(const std::vector<std::string>& args) {
  Usage("set config files", outputMode);
  if (args.size() > kUserNamePosition) {
    ethernetPassThroughCredentials.userName = args[kUserNamePosition];
  }
  if (args.size() > kPasswordPosition) {
    ethernetPassThroughCredentials.userPassword = args[kPasswordPosition];
  }
  regenerateFiles(args);
}

void setOpenWiredConfig(const std::vector<std::string>& args) {
  Usage("set config files", outputMode);
  openWiredConfig = true;
  regenerateFiles(args);
}

void setWpaConfig(const std::vector<std::string>& args) {
  lockNetworkFiles();
  initConfig(args[kPathPosition], outputMode);
  generateWirelessConfig(outputMode);
}

// One row per command, in the order the commands are tested.
const std::vector<std::pair<std::string, Operation>>& commandTable() {
  static const std::vector<std::pair<std::string, Operation>> table = {
      {"set-config", logged(withConfigPath(setConfig))},
      {"set-open-wired-config", logged(withConfigPath(setOpenWiredConfig))},
      {"set-wpa-config", logged(withConfigPath(setWpaConfig))},
      {"autoconnect", logged(withConfigPath([](const auto& args) {
         Usage(autoconnect(args[kPathPosition], outputMode) ? "autoconnect complete"
                                                            : "autoconnect false",
               outputMode);
       }))},
      {"is-wired-on", [](const auto&) { isEnabledWired(outputMode); }},
      {"is-wireless-on", [](const auto&) { isEnabledWireless(outputMode); }},
      {"is-wlan0-connected", [](const auto&) { isConnectedWireless(outputMode); }},
      {"is-wired-linked", [](const auto&) { isLinkedWired(outputMode); }},
      {"is-eth0-connected", [](const auto&) { isConnectedWired(outputMode); }},
      {"is-tun0-connected", [](const auto&) { isConnectedTun0(outputMode); }},
      {"is-ppp0-connected", [](const auto&) { isConnectedPpp0(outputMode); }},
      {"is-ipsec-connected", [](const auto&) { isConnectedIpsec(outputMode); }},
      {"get-eth0-parameters", [](const auto&) { getInterfaceValues(outputMode, eth0Interface); }},
      {"get-wlan0-parameters", [](const auto&) { getInterfaceValues(outputMode, wlan0Interface); }},
      {"get-tun0-parameters", [](const auto&) { getInterfaceValues(outputMode, tun0Interface); }},
      {"get-ppp0-parameters", [](const auto&) { getInterfaceValues(outputMode, ppp0Interface); }},
      {"get-ipsec-parameters", [](const auto&) { getIpsecValues(outputMode); }},
      {"get-default-gateway", [](const auto&) { getDefaultGateway(outputMode); }},
      {"connect-wifi", logged([](const auto&) { connectWifi(outputMode); })},
      {"connect-ethernet", logged([](const auto&) { connectEthernet(outputMode); })},
      {"disconnect-wifi", logged([](const auto&) { disconnectWifi(outputMode); })},
      {"disconnect-ethernet", logged([](const auto&) { disconnectEthernet(outputMode); })},
      {"turn-on-wireless", logged([](const auto&) { turnOnWireless(outputMode); })},
      {"turn-on-wired", logged([](const auto&) { turnOnWired(outputMode); })},
      {"turn-off-wireless", logged([](const auto&) { turnOffWireless(outputMode); })},
      {"turn-off-wired", logged([](const auto&) { turnOffWired(outputMode); })},
      {"get-wifi-list", [](const auto&) { getWifiList(wifiList, outputMode); }},
      {"check-wireless-point", [](const auto&) { checkWirelessPoint(outputMode); }},
  };
  return table;
}

}  // namespace

void dispatch(const std::vector<std::string>& args) {
  for (const auto& [name, operation] : commandTable()) {
    if (name == args[1]) {
      operation(args);
      return;
    }
  }
}

#include "link/probes.h"

#include <functional>
#include <string>
#include <vector>

#include "common/shell.h"
#include "link/ipsec_command.h"
#include "link/probe_scan.h"

namespace {

using PieceTest = std::function<bool(const std::vector<std::string>&)>;

struct Probe {
  const char* command;
  const char* question;
  const char* label;
  const char* yesAnswer;
  const char* noAnswer;
};

constexpr const char* kEnabled = "enabled.\n";
constexpr const char* kDisabled = "disabled.\n";
constexpr const char* kConnected = "connected.\n";
constexpr const char* kNotConnected = "not connected.\n";

const Probe kWiredOn{"ifconfig", "Is ethernet enabled...", "Ethernet is ", kEnabled, kDisabled};
const Probe kWirelessOn{"ifconfig", "Is wifi enabled...", "Wifi is ", kEnabled, kDisabled};
const Probe kWiredLinked{"sudo ethtool eth0", "Is ethernet linked...", "Ethernet is ", "linked.\n",
                         "not linked.\n"};
const Probe kWirelessConnected{"ip link show wlan0", "Is wireless connected...", "Wireless is ",
                               kConnected, kNotConnected};
const Probe kWiredConnected{"ifconfig eth0", "Is wired connected...", "Wired is ", kConnected,
                            kNotConnected};
const Probe kTun0Connected{"ifconfig tun0 2>&1", "Is tun0 connected...", "tun0 is ", kConnected,
                           kNotConnected};
// The ppp0 answer carries the tun0 label: the management application matches on it.
const Probe kPpp0Connected{"ifconfig ppp0 2>&1", "Is ppp0 connected...", "tun0 is ", kConnected,
                           kNotConnected};
const Probe kIpsecConnected{kIpsecStatus, "Is ipsec connected...", "Ipsec is ", kConnected,
                            kNotConnected};

bool runProbe(const Probe& probe, const PieceTest& test, UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << probe.question << std::endl;
  const bool result = test(capturePieces(probe.command));
  if (mode == applicationMode) {
    out << (result ? "true" : "false");
  } else if (mode == consoleMode) {
    out << probe.label << (result ? probe.yesAnswer : probe.noAnswer);
  }
  return result;
}

PieceTest containing(const char* needle) {
  return
      [needle](const std::vector<std::string>& pieces) { return anyPieceContains(pieces, needle); };
}

PieceTest lastWordOf(const char* selector, const char* yesWord, const char* noWord) {
  return [=](const std::vector<std::string>& pieces) {
    return lastSelectedWordVerdict(pieces, selector, yesWord, noWord);
  };
}

}  // namespace

bool isEnabledWired(UserMode mode, std::ostream& out) {
  return runProbe(kWiredOn, containing("eth0"), mode, out);
}

bool isEnabledWireless(UserMode mode, std::ostream& out) {
  return runProbe(kWirelessOn, containing("wlan0"), mode, out);
}

bool isLinkedWired(UserMode mode, std::ostream& out) {
  return runProbe(kWiredLinked, lastWordOf("Link detected:", "yes", "no"), mode, out);
}

bool isConnectedWireless(UserMode mode, std::ostream& out) {
  return runProbe(kWirelessConnected, lastWordOf("wlan0", "UP", "DOWN"), mode, out);
}

bool isConnectedWired(UserMode mode, std::ostream& out) {
  return runProbe(kWiredConnected, containing("inet "), mode, out);
}

bool isConnectedTun0(UserMode mode, std::ostream& out) {
  return runProbe(kTun0Connected, containing("inet "), mode, out);
}

bool isConnectedPpp0(UserMode mode, std::ostream& out) {
  return runProbe(kPpp0Connected, containing("inet "), mode, out);
}

bool isConnectedIpsec(UserMode mode, std::ostream& out) {
  return runProbe(
      kIpsecConnected,
      [](const std::vector<std::string>& pieces) {
        return anyPieceContainsBoth(pieces, "ipsec-vpn", "ESTABLISHED");
      },
      mode, out);
}

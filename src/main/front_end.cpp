#include "main/front_end.h"

#include "common/run_log.h"
#include "credentials/cipher_key.h"
#include "main/dispatch.h"
#include "main/usage.h"

std::string deamonName;
std::vector<std::string> methodsInput = {
    "set-config",           "connect-wifi",        "connect-ethernet",
    "is-wired-linked",      "is-wlan0-connected",  "get-wifi-list",
    "disconnect-wifi",      "disconnect-ethernet", "get-eth0-parameters",
    "get-wlan0-parameters", "autoconnect",         "is-wired-on",
    "is-wireless-on",       "is-eth0-connected",   "check-wireless-point",
    "turn-on-wireless",     "turn-on-wired",       "turn-off-wireless",
    "turn-off-wired",       "get-default-gateway", "set-open-wired-config",
    "get-tun0-parameters",  "get-ppp0-parameters", "is-tun0-connected",
    "is-ppp0-connected",    "set-wpa-config",      "get-ipsec-parameters",
    "is-ipsec-connected"};
UserMode outputMode = applicationMode;

bool checkMethods(std::string command) {
  for (const std::string& name : methodsInput) {
    if (name == command) return true;
  }
  return false;
}

int runFrontEnd(int argc, char* argv[]) {
  const std::vector<std::string> args(argv, argv + argc);
  deamonName = args.empty() ? std::string() : args[0];
  loadCipherKey();
  // Only a known name is logged: a word typed in its place could be anything, a password too.
  const bool known = args.size() > 1 && checkMethods(args[1]);
  if (known) noteRunCommand(args[1]);
  if (args.size() < 3 || !known) {
    Usage("intro", consoleMode);
    Usage("input error", consoleMode);
    return 1;  // not reached: the "input error" message ends the run
  }
  if (args[2] == "A") {
    outputMode = applicationMode;
  } else if (args[2] == "M") {
    outputMode = consoleMode;
  }
  Usage("in proggress", outputMode);
  dispatch(args);
  return 0;
}

#include "main/usage.h"

#include <iomanip>

#include "common/run_log.h"
#include "main/front_end.h"

namespace {

constexpr const char* kInputError = "Wrong arguments! Please correct command line.\n";
constexpr const char* kNoConfigJson =
    "No config.json file in command line. Please check arguments.\n";
constexpr const char* kBadCommandLine = "bad command line";
constexpr const char* kNoConfigPath = "no config.json path on the command line";

struct Entry {
  const char* text;
  int width;
};

// Ten rows of names; the last entry of a row carries the row's newline inside its field, so the
// single entry of the last row leaves three blanks at the start of the next line.
const Entry kCommandRows[][3] = {
    {{"|set-config", 23}, {"|connect-wifi", 22}, {"|connect-ethernet\n", 13}},
    {{"|disconnect-wifi", 23}, {"|disconnect-ethernet", 22}, {"|get-wifi-list\n", 13}},
    {{"|get-eth0-parameters", 23}, {"|get-wlan0-parameters", 22}, {"|autoconnect\n", 13}},
    {{"|is-wired-on", 23}, {"|is-wireless-on", 22}, {"|is-wired-linked\n", 13}},
    {{"|is-wlan0-connected", 23}, {"|is-eth0-connected", 22}, {"|check-wireless-point\n", 13}},
    {{"|turn-on-wireless", 23}, {"|turn-on-wired", 22}, {"|turn-off-wireless\n", 13}},
    {{"|turn-off-wired", 23}, {"|get-default-gateway", 22}, {"|set-open-wired-config\n", 13}},
    {{"|get-tun0-parameters", 23}, {"|get-ppp0-parameters", 22}, {"|is-tun0-connected\n", 13}},
    {{"|is-ppp0-connected", 23}, {"|set-wpa-config", 22}, {"|get-ipsec-parameters\n", 13}},
    {{"|is-ipsec-connected\n", 23}, {nullptr, 0}, {nullptr, 0}},
};

void printIntro(std::ostream& out) {
  out << "This tool provide to regenerate network files, reading network status and connecting to "
         "configured network.\n";
  out << "Available first arguments for tool " << deamonName << ":\n";
  for (const auto& row : kCommandRows) {
    for (const Entry& entry : row) {
      if (entry.text != nullptr) out << std::left << std::setw(entry.width) << entry.text;
    }
  }
  out << "\nThe second argument must be M -console mode or A -application mode.\n";
  out << "Third argument \"absolute path to config.json file\" is required to set-config, "
         "set-open-wired-config, set-wpa-config and autoconnect.\n";
}

const char* consoleText(const std::string& key) {
  if (key == "in proggress") return "Valid arguments. Operation is going to start...\n";
  if (key == "set config files") {
    return "Network configuration files will be ganerated based on config.json.\n";
  }
  if (key == "autoconnect complete") return "Autoconnect complete.\n";
  if (key == "autoconnect false") return "Autoconnect false.\n";
  return "";
}

[[noreturn]] void failWith(const char* message, const char* reason, UserMode mode,
                           std::ostream& err) {
  if (mode == consoleMode) err << message;
  failRun(reason);
}

}  // namespace

void Usage(std::string key, UserMode mode, std::ostream& out, std::ostream& err) {
  if (mode > consoleMode) return;
  if (key == "input error") failWith(kInputError, kBadCommandLine, mode, err);
  if (key == "error config.json") failWith(kNoConfigJson, kNoConfigPath, mode, err);
  if (mode != consoleMode) return;
  if (key == "intro") {
    printIntro(out);
  } else {
    out << consoleText(key);
  }
}

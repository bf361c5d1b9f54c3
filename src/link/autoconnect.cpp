#include "link/autoconnect.h"

#include <exception>

#include "common/run_log.h"
#include "link/switching.h"
#include "settings/config_file.h"

namespace {

constexpr const char* kReadFailure =
    "Error: Autoconnect failed. Reading config.json file not possible.\n";
constexpr const char* kUnreadable = "config.json cannot be read or parsed";

bool wish(const Json::Value& interfaces, const char* name) {
  const Json::Value& enabled = interfaces[name]["enabled"];
  return enabled.isBool() && enabled.asBool();
}

// Brings one interface to its wanted state; a take-down counts as success whatever happened.
bool handle(bool wanted, const char* connecting, const char* disconnecting,
            bool (*connect)(UserMode, std::ostream&), int (*disconnect)(UserMode, std::ostream&),
            UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << (wanted ? connecting : disconnecting) << std::endl;
  if (wanted) return !connect(mode, out);
  disconnect(mode, out);
  return true;
}

const char* verdict(bool success) {
  return success ? "Correct" : "Incorrect";
}

bool noteVerdict(const char* interface, bool success) {
  noteOutcome(std::string(interface) + " " + verdict(success));
  return success;
}

}  // namespace

std::optional<LinkWishes> linkWishesOf(const Json::Value& document) {
  try {
    // The encoding is never used, but reading it is part of accepting the file.
    document.get("encoding", "UTF-8").asString();
    const Json::Value& interfaces = document["network settings"]["interfaces"];
    return LinkWishes{wish(interfaces, "eth"), wish(interfaces, "wlan")};
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

bool autoconnect(const std::string& path, UserMode mode, std::ostream& out, std::ostream& err) {
  if (mode == consoleMode) out << "Starting autoconnect..." << std::endl;
  std::optional<LinkWishes> wishes;
  if (parseConfigJson(path)) wishes = linkWishesOf(root);
  if (!wishes) {
    if (mode == consoleMode) err << kReadFailure;
    failRun(kUnreadable);
  }
  const LinkVerdicts reached = reachLinkWishes(*wishes, mode, out);
  if (mode == consoleMode) {
    out << "Status autoconnect Ethernet: " << verdict(reached.wired) << std::endl;
    out << "Status autoconnect WiFi: " << verdict(reached.wireless) << std::endl;
  }
  return reached.wired && reached.wireless;
}

LinkVerdicts reachLinkWishes(const LinkWishes& wishes, UserMode mode, std::ostream& out) {
  LinkVerdicts reached;
  reached.wired =
      noteVerdict("eth0", handle(wishes.wired, "Connecting to eth0... ", "Disconnecting eth0...",
                                 connectEthernet, disconnectEthernet, mode, out));
  reached.wireless = noteVerdict(
      "wlan0", handle(wishes.wireless, "Connecting to wlan0... ", "Disconnecting wlan0...",
                      connectWifi, disconnectWifi, mode, out));
  return reached;
}

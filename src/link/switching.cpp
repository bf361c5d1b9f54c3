#include "link/switching.h"

#include "common/back_end.h"
#include "common/nmcli.h"
#include "common/run_log.h"
#include "common/shell.h"
#include "generate/nm_profile.h"

namespace {

constexpr const char* kWirelessUp = "ifconfig wlan0 up";
constexpr const char* kWiredUp = "ifconfig eth0 up";
constexpr const char* kWirelessDown = "ifconfig wlan0 down";
constexpr const char* kWiredDown = "ifconfig eth0 down";
constexpr const char* kWirelessIfdown = "sudo ifdown wlan0 --force";
constexpr const char* kWirelessIfup = "sudo ifup wlan0";
constexpr const char* kWiredIfdown = "sudo ifdown eth0 --force";
constexpr const char* kWiredIfup = "sudo ifup eth0";

// The status of the command that counts goes into the run's log line (without `quiet`, the
// redirection that keeps a utility's chatter out of the reply).
int runCounted(const std::string& command, const char* quiet = "") {
  const int status = shell().run(command + quiet);
  noteOutcome(commandStatus(command, status));
  return status;
}

void announce(const char* line, UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << line << std::endl;
}

int announceAndRun(const char* line, const std::string& command, UserMode mode, std::ostream& out) {
  announce(line, mode, out);
  return runCounted(command);
}

// The forced take-down's status is of no interest: only bringing the network up counts.
// NetworkManager brings an active profile up again by itself, so it is only asked to bring it up.
bool reconnect(const char* line, const char* down, const char* up, const char* profile,
               UserMode mode, std::ostream& out) {
  const bool managed = runBackEnd() == BackEnd::networkManager;
  announce(line, mode, out);
  if (managed) return runCounted(nmcliUp(profile), kNmcliQuiet) != 0;
  shell().run(down);
  return runCounted(up) != 0;
}

int takeDown(const char* line, const char* down, const char* profile, UserMode mode,
             std::ostream& out) {
  if (runBackEnd() != BackEnd::networkManager) return announceAndRun(line, down, mode, out);
  announce(line, mode, out);
  return runCounted(nmcliDown(profile), kNmcliQuiet);
}

}  // namespace

int turnOnWireless(UserMode mode, std::ostream& out) {
  return announceAndRun("Get turn on wifi...", kWirelessUp, mode, out);
}

// The wired switch announces itself with the wireless wording; consoles have always shown it so.
int turnOnWired(UserMode mode, std::ostream& out) {
  return announceAndRun("Get turn on wifi...", kWiredUp, mode, out);
}

int turnOffWireless(UserMode mode, std::ostream& out) {
  return announceAndRun("Get turn off wifi...", kWirelessDown, mode, out);
}

int turnOffWired(UserMode mode, std::ostream& out) {
  return announceAndRun("Get turn off ethernet...", kWiredDown, mode, out);
}

bool connectWifi(UserMode mode, std::ostream& out) {
  return reconnect("Connect to wifi...", kWirelessIfdown, kWirelessIfup, kWirelessProfile, mode,
                   out);
}

bool connectEthernet(UserMode mode, std::ostream& out) {
  return reconnect("Connect to ethernet...", kWiredIfdown, kWiredIfup, kWiredProfile, mode, out);
}

int disconnectWifi(UserMode mode, std::ostream& out) {
  return takeDown("Disconnect Wifi...", kWirelessIfdown, kWirelessProfile, mode, out);
}

int disconnectEthernet(UserMode mode, std::ostream& out) {
  return takeDown("Disconnect ethernet...", kWiredIfdown, kWiredProfile, mode, out);
}

#include "link/switching.h"

#include "common/run_log.h"
#include "common/shell.h"

namespace {

constexpr const char* kWirelessUp = "ifconfig wlan0 up";
constexpr const char* kWiredUp = "ifconfig eth0 up";
constexpr const char* kWirelessDown = "ifconfig wlan0 down";
constexpr const char* kWiredDown = "ifconfig eth0 down";
constexpr const char* kWirelessIfdown = "sudo ifdown wlan0 --force";
constexpr const char* kWirelessIfup = "sudo ifup wlan0";
constexpr const char* kWiredIfdown = "sudo ifdown eth0 --force";
constexpr const char* kWiredIfup = "sudo ifup eth0";

// The status of the command that counts goes into the run's log line.
int runCounted(const char* command) {
  const int status = shell().run(command);
  noteOutcome(commandStatus(command, status));
  return status;
}

void announce(const char* line, UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << line << std::endl;
}

int announceAndRun(const char* line, const char* command, UserMode mode, std::ostream& out) {
  announce(line, mode, out);
  return runCounted(command);
}

// The forced take-down's status is of no interest: only bringing the network up counts.
bool reconnect(const char* line, const char* down, const char* up, UserMode mode,
               std::ostream& out) {
  announce(line, mode, out);
  shell().run(down);
  return runCounted(up) != 0;
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
  return reconnect("Connect to wifi...", kWirelessIfdown, kWirelessIfup, mode, out);
}

bool connectEthernet(UserMode mode, std::ostream& out) {
  return reconnect("Connect to ethernet...", kWiredIfdown, kWiredIfup, mode, out);
}

int disconnectWifi(UserMode mode, std::ostream& out) {
  return announceAndRun("Disconnect Wifi...", kWirelessIfdown, mode, out);
}

int disconnectEthernet(UserMode mode, std::ostream& out) {
  return announceAndRun("Disconnect ethernet...", kWiredIfdown, mode, out);
}

#include "common/nmcli.h"

#include "common/shell.h"

const char* const kNmcliRunning = "timeout 10 nmcli -t -f RUNNING general 2>/dev/null";
const char* const kNmcliReload = "nmcli connection reload";
const char* const kNmcliQuiet = " >/dev/null";

std::string nmcliLoad(const std::string& path) {
  return "nmcli connection load '" + path + "' 2>&1";
}

std::string nmcliUp(const std::string& profile) {
  return "sudo nmcli connection up " + profile;
}

std::string nmcliDown(const std::string& profile) {
  return "sudo nmcli connection down " + profile;
}

namespace {

std::string outputOf(const std::string& command) {
  std::string output;
  shell().read(command, [&output](const std::string& piece) {
    output += piece;
    return true;
  });
  return output;
}

}  // namespace

bool networkManagerAnswers() {
  return outputOf(kNmcliRunning) == "running\n";
}

std::string loadProfile(const std::string& path) {
  const std::string output = outputOf(nmcliLoad(path));
  return output.substr(0, output.find('\n'));
}

bool profileActive(const std::string& profile) {
  return outputOf("nmcli -g GENERAL.STATE connection show " + profile + " 2>/dev/null")
             .rfind("activated", 0) == 0;
}

#include "common/nmcli.h"

#include "common/shell.h"

const char* const kNmcliRunning = "timeout 10 nmcli -t -f RUNNING general 2>/dev/null";
const char* const kNmcliReload = "nmcli connection reload";

std::string nmcliLoad(const std::string& path) {
  return "nmcli connection load '" + path + "'";
}

std::string nmcliUp(const std::string& profile) {
  return "sudo nmcli connection up " + profile + " >/dev/null";
}

std::string nmcliDown(const std::string& profile) {
  return "sudo nmcli connection down " + profile + " >/dev/null";
}

bool networkManagerAnswers() {
  std::string output;
  shell().read(kNmcliRunning, [&output](const std::string& piece) {
    output += piece;
    return true;
  });
  return output == "running\n";
}

#include "common/back_end.h"

#include <dirent.h>
#include <sys/stat.h>

#include <fstream>
#include <iostream>
#include <sstream>

#include "common/run_log.h"

const char* const kBackEndPath = "/etc/qv-netconf/backend";
const char* const kNetworkManagerPidPath = "/run/NetworkManager/NetworkManager.pid";
const char* const kNetworkManagerRunDir = "/run/NetworkManager";

namespace {

constexpr const char* kIfupdownWord = "ifupdown";
constexpr const char* kNetworkManagerWord = "networkmanager";
constexpr const char* kBlanks = " \t\r\n";

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) return std::string();
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<std::string> fileContent(const char* path) {
  std::ifstream file(path);
  if (!file) return std::nullopt;
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

bool isNetworkManagerPid(const std::string& pid) {
  if (pid.empty() || pid.find_first_not_of("0123456789") != std::string::npos) return false;
  const std::optional<std::string> comm = fileContent(("/proc/" + pid + "/comm").c_str());
  return comm && isNetworkManagerName(*comm);
}

// A daemonised NetworkManager leaves its pid file; the one a service manager runs in the
// foreground leaves none, so where NetworkManager has run since boot (its run directory exists)
// the processes are looked through. A board that never ran it pays one stat.
bool networkManagerRuns() {
  const std::optional<std::string> pid = fileContent(kNetworkManagerPidPath);
  if (pid && isNetworkManagerPid(trimmed(*pid))) return true;
  struct stat status;
  if (::stat(kNetworkManagerRunDir, &status) != 0) return false;
  DIR* processes = ::opendir("/proc");
  if (processes == nullptr) return false;
  bool found = false;
  while (const dirent* entry = ::readdir(processes)) {
    if (isNetworkManagerPid(entry->d_name)) {
      found = true;
      break;
    }
  }
  ::closedir(processes);
  return found;
}

}  // namespace

const char* backEndWord(BackEnd backEnd) {
  return backEnd == BackEnd::networkManager ? kNetworkManagerWord : kIfupdownWord;
}

backEndDecision decideBackEnd(const std::optional<std::string>& content, bool networkManagerRuns) {
  backEndDecision decision;
  if (content) {
    const std::string word = trimmed(*content);
    if (word == kIfupdownWord || word == kNetworkManagerWord) {
      const BackEnd chosen = word == kIfupdownWord ? BackEnd::ifupdown : BackEnd::networkManager;
      decision.choice = backEndChoice{chosen, std::string(kBackEndPath) + " says so"};
    } else {
      decision.error = std::string(kBackEndPath) + " holds \"" + word + "\", not \"" +
                       kIfupdownWord + "\" or \"" + kNetworkManagerWord + "\"";
    }
    return decision;
  }
  if (networkManagerRuns) {
    decision.choice = backEndChoice{BackEnd::networkManager, "NetworkManager is running"};
  } else {
    decision.choice = backEndChoice{BackEnd::ifupdown, "NetworkManager is not running"};
  }
  return decision;
}

bool isNetworkManagerName(const std::string& comm) {
  return trimmed(comm) == "NetworkManager";
}

backEndDecision detectBackEnd() {
  const std::optional<std::string> content = fileContent(kBackEndPath);
  // The file decides alone: NetworkManager is not even looked for.
  return decideBackEnd(content, !content && networkManagerRuns());
}

namespace {

// The decision of this run, made once: a bad file is not read again by the command that needs
// the back end after the log line has asked for it.
std::optional<backEndDecision> decided;
std::optional<BackEnd> chosen;

const backEndDecision& decision() {
  if (!decided) {
    decided = detectBackEnd();
    if (decided->choice) {
      chosen = decided->choice->backEnd;
      if (*chosen == BackEnd::networkManager) noteBackEnd(backEndWord(*chosen));
    }
  }
  return *decided;
}

}  // namespace

BackEnd runBackEnd() {
  if (chosen) return *chosen;
  const backEndDecision& made = decision();
  if (!made.choice) {
    std::cerr << "Error: " << made.error << "." << std::endl;
    failRun(made.error);
  }
  return *chosen;
}

void noteRunBackEnd() {
  if (!chosen) decision();
}

bool onNetworkManager() {
  noteRunBackEnd();
  return chosen == BackEnd::networkManager;
}

void pinRunBackEnd(std::optional<BackEnd> backEnd) {
  chosen = backEnd;
  decided.reset();
}

#pragma once

#include <optional>
#include <string>

// The stack that runs the network, chosen once per run by the commands that write the network
// files or drive the links; probes and scans never ask.
enum class BackEnd { ifupdown, networkManager };

// The file an operator writes to make the choice instead of the detection.
extern const char* const kBackEndPath;
// Where a daemonised NetworkManager keeps the number of its process, and the directory any
// NetworkManager makes when it starts.
extern const char* const kNetworkManagerPidPath;
extern const char* const kNetworkManagerRunDir;

// "ifupdown" or "networkmanager", as the back-end file and the log name them.
const char* backEndWord(BackEnd backEnd);

// The choice and why it was made, in words for a person.
struct backEndChoice {
  BackEnd backEnd = BackEnd::ifupdown;
  std::string reason;
};

// What the choice is made from: the back-end file's content (empty optional: no such file) and
// whether NetworkManager runs. An error names the file and the two words it may hold.
struct backEndDecision {
  std::optional<backEndChoice> choice;
  std::string error;
};
backEndDecision decideBackEnd(const std::optional<std::string>& fileContent,
                              bool networkManagerRuns);

// Whether `comm` (a /proc/PID/comm line) is NetworkManager's.
bool isNetworkManagerName(const std::string& comm);

// Reads the back-end file and looks for NetworkManager: its pid file, and where NetworkManager
// has run since boot its process among /proc's; no process started.
backEndDecision detectBackEnd();

// The back end of this run, decided on first use and kept. A bad back-end file ends the run with
// status 1 (the reason on `err`, whatever the mode). The NetworkManager back end is named in the
// run's log line.
BackEnd runBackEnd();
// For a changing command's log line: decides the back end as runBackEnd does, but a bad back-end
// file only leaves the choice to runBackEnd (a switch that never needs it still runs).
void noteRunBackEnd();
// Whether the run works through NetworkManager, decided as noteRunBackEnd does.
bool onNetworkManager();
// Fixes the back end runBackEnd gives (a test's choice), or lets it decide again (nullopt).
void pinRunBackEnd(std::optional<BackEnd> backEnd);

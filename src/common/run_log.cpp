#include "common/run_log.h"

#include <sys/wait.h>
#include <syslog.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

const char* identity = "qv-netconf";

struct RunRecord {
  std::string command;
  std::string configPath;
  std::string backEnd;
  std::vector<std::string> replaced;
  std::vector<std::string> outcomes;
};

RunRecord& record() {
  static RunRecord run;
  return run;
}

// Opened only here, at the end of a run, so no utility the tool starts inherits the socket. The
// pid tells apart runs that overlap (the management application and a technician). Without a
// log socket the line is dropped silently, as syslog(3) does.
void sendToSyslog(int priority, const std::string& line) {
  openlog(identity, LOG_PID, LOG_DAEMON);
  syslog(priority, "%s", line.c_str());
  closelog();
}

LogSender sender = sendToSyslog;

std::string joined(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "" : ", ") + item;
  return text;
}

std::string subject(const RunRecord& run) {
  std::string text = run.command;
  if (!run.configPath.empty()) text += " with " + run.configPath;
  if (!run.backEnd.empty()) text += " on " + run.backEnd;
  return text;
}

}  // namespace

void noteRunCommand(const std::string& command) {
  record().command = command;
}

void noteConfigPath(const std::string& path) {
  record().configPath = path;
}

void noteBackEnd(const std::string& backEnd) {
  record().backEnd = backEnd;
}

void noteFileReplaced(const std::string& path) {
  record().replaced.push_back(path);
}

void noteFileRestored(const std::string& path) {
  std::vector<std::string>& replaced = record().replaced;
  replaced.erase(std::remove(replaced.begin(), replaced.end(), path), replaced.end());
}

void noteOutcome(const std::string& outcome) {
  record().outcomes.push_back(outcome);
}

void logRunCompleted() {
  const RunRecord& run = record();
  std::string outcome = run.replaced.empty() ? "" : "replaced " + joined(run.replaced);
  if (!run.outcomes.empty()) outcome += (outcome.empty() ? "" : "; ") + joined(run.outcomes);
  sender(LOG_NOTICE, subject(run) + ": " + outcome);
}

void failRun(const std::string& reason) {
  const RunRecord& run = record();
  std::string line = run.command.empty() ? reason : subject(run) + " failed: " + reason;
  if (!run.replaced.empty()) line += "; already replaced " + joined(run.replaced);
  sender(LOG_ERR, line);
  std::exit(1);
}

std::vector<std::string> takeNotedOutcomes() {
  std::vector<std::string> outcomes;
  outcomes.swap(record().outcomes);
  return outcomes;
}

void setLogIdentity(const char* name) {
  identity = name;
}

void sendLogLine(int priority, const std::string& line) {
  sender(priority, line);
}

std::string commandStatus(const std::string& command, int rawStatus) {
  if (rawStatus == -1) return command + " could not be started";
  if (WIFSIGNALED(rawStatus)) {
    return command + " was killed by signal " + std::to_string(WTERMSIG(rawStatus));
  }
  return command + " exited with status " + std::to_string(WEXITSTATUS(rawStatus));
}

LogSender installLogSender(LogSender replacement) {
  const LogSender previous = sender;
  sender = replacement;
  return previous;
}

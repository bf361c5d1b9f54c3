#pragma once

#include <string>
#include <vector>

// The run's trace in the system log (identity "qv-netconf" unless a companion names itself,
// facility daemon). A command that
// changes something leaves one notice line when it completes; a run that ends with status 1
// leaves one error line with the reason. The notes below only collect in memory: nothing is
// sent, and the log is not even opened, until one of the two ends, so reading commands never
// touch it. Only names of commands, files and settings go in, never a value of a setting.

// The command of the run, once the command line names a known one.
void noteRunCommand(const std::string& command);
// The config.json the command works on.
void noteConfigPath(const std::string& path);
// The run works through this back end (only a back end other than ifupdown is named).
void noteBackEnd(const std::string& backEnd);
// A network file has been written whole.
void noteFileReplaced(const std::string& path);
// A network file written by this run has been put back as it was before it.
void noteFileRestored(const std::string& path);
// Something the command's outcome consists of (a status that counts, a verdict).
void noteOutcome(const std::string& outcome);

// Sends the notice line of a changing command that has completed.
void logRunCompleted();
// Sends the error line with `reason` (and the files already replaced) and ends the process with
// status 1. The caller prints its own console message first.
[[noreturn]] void failRun(const std::string& reason);

// The outcomes noted so far, which are then forgotten (a companion that runs the tool's link
// operations words its own line from them).
std::vector<std::string> takeNotedOutcomes();

// The identity the lines are sent under; `identity` must live as long as the process.
void setLogIdentity(const char* identity);
// Sends one line as it stands: a companion's own record of what it did.
void sendLogLine(int priority, const std::string& line);

// "COMMAND exited with status N" for a raw system() status (or how else it ended).
std::string commandStatus(const std::string& command, int rawStatus);

// Where the lines go: syslog(3) unless a test has installed another sender. Returns the previous.
using LogSender = void (*)(int priority, const std::string& line);
LogSender installLogSender(LogSender sender);

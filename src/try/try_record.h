#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "link/autoconnect.h"

// Where a try stands. Each step to the next is made durable before anything it decides is done,
// so that whoever comes next (the watcher, a later call, the next boot) finishes it.
enum class tryPhase {
  pending,      // applied or being applied; undone unless confirmed in time
  confirmed,    // kept: what is left is to forget the previous files
  rollingBack,  // undone: the previous files are being put back
};

// One network file as it was before the try.
struct savedFile {
  std::string path;
  bool existed = false;
  std::string content;
  mode_t mode = 0;
  uid_t uid = 0;
  gid_t gid = 0;
};

// A time on the clocks a try is judged by: the boot it belongs to, the milliseconds since that
// boot (which no clock setting moves) and the wall clock (for people).
struct tryClock {
  std::string bootId;
  std::int64_t sinceBootMs = 0;
  std::int64_t wallSeconds = 0;
};

// Everything a try needs to be finished by another process: what it applied, until when, how it
// may be confirmed, and what to put back.
struct tryRecord {
  std::string id;
  tryPhase phase = tryPhase::pending;
  std::string reason;      // why it is being rolled back
  std::string config;      // the config.json path as given
  std::string configText;  // its content as applied
  int timeoutSeconds = 0;
  tryClock deadline;
  std::vector<std::string> confirmWhen;
  LinkWishes previousLinks;  // how the interfaces are brought back
  std::vector<savedFile> files;
};

// The record as the text kept on disk (JSON; file contents in base64, since they may hold any
// byte), and back. Empty for a text that is not a whole record.
std::string recordText(const tryRecord& record);
std::optional<tryRecord> parseRecord(const std::string& text);

// Milliseconds left before `deadline` at `now`; a deadline of another boot has passed, whatever
// the clocks say: a restart during the window counts as not confirmed.
std::int64_t remainingMs(const tryClock& deadline, const tryClock& now);

// The outcome of a try that ended, kept for --status.
struct tryOutcome {
  std::string id;
  std::string result;  // "confirmed" or "rolled back"
  std::string config;
  std::string reason;  // why it was rolled back, or how it was confirmed
  std::int64_t wallSeconds = 0;
  // For a confirmed try: the interfaces file and the DHCP client file it wrote, by which a later
  // try knows whether the copy of its config.json still says how the links are meant.
  std::string filesPrint;
};

std::string outcomeText(const tryOutcome& outcome);
std::optional<tryOutcome> parseOutcome(const std::string& text);

// A short fingerprint of some texts (64-bit FNV-1a, in hex), stable across builds.
std::string fingerprint(const std::vector<std::string>& texts);

#include "try/try_record.h"

#include <json/json.h>

#include <cstdio>
#include <sstream>

#include "credentials/base64.h"

namespace {

constexpr const char* kPhasePending = "pending";
constexpr const char* kPhaseConfirmed = "confirmed";
constexpr const char* kPhaseRollingBack = "rolling back";

const char* phaseWord(tryPhase phase) {
  switch (phase) {
    case tryPhase::confirmed:
      return kPhaseConfirmed;
    case tryPhase::rollingBack:
      return kPhaseRollingBack;
    default:
      return kPhasePending;
  }
}

std::optional<tryPhase> phaseOf(const std::string& word) {
  if (word == kPhasePending) return tryPhase::pending;
  if (word == kPhaseConfirmed) return tryPhase::confirmed;
  if (word == kPhaseRollingBack) return tryPhase::rollingBack;
  return std::nullopt;
}

std::string encoded(const std::string& bytes) {
  return base64_encode(reinterpret_cast<const unsigned char*>(bytes.data()),
                       static_cast<unsigned int>(bytes.size()));
}

std::string written(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = " ";
  return Json::writeString(builder, value) + "\n";
}

std::optional<Json::Value> parsedObject(const std::string& text) {
  Json::Value value;
  Json::Reader reader;
  try {
    if (!reader.parse(text, value, false) || !value.isObject()) return std::nullopt;
  } catch (const Json::Exception&) {
    return std::nullopt;
  }
  return value;
}

// Members of a parsed record, each of the one type it must have; a wrong one spoils the whole.
class reading {
 public:
  explicit reading(const Json::Value& value) : value_(value) {}
  bool ok() const { return ok_; }
  void spoil() { ok_ = false; }

  std::string text(const char* name) {
    const Json::Value& v = value_[name];
    if (!v.isString()) ok_ = false;
    return v.isString() ? v.asString() : std::string();
  }
  std::int64_t number(const char* name) {
    const Json::Value& v = value_[name];
    if (!v.isInt64()) ok_ = false;
    return v.isInt64() ? v.asInt64() : 0;
  }
  bool flag(const char* name) {
    const Json::Value& v = value_[name];
    if (!v.isBool()) ok_ = false;
    return v.isBool() && v.asBool();
  }
  const Json::Value& list(const char* name) {
    const Json::Value& v = value_[name];
    if (!v.isArray()) ok_ = false;
    return v;
  }
  // Base64 as this file writes it: only the alphabet and its padding.
  std::string bytes(const char* name) {
    const std::string value = text(name);
    if (value.find_first_not_of(base64_chars + "=") != std::string::npos) ok_ = false;
    return base64_decode(value);
  }

 private:
  const Json::Value& value_;
  bool ok_ = true;
};

Json::Value clockValue(const tryClock& clock) {
  Json::Value value(Json::objectValue);
  value["boot"] = clock.bootId;
  value["since boot ms"] = Json::Int64(clock.sinceBootMs);
  value["wall"] = Json::Int64(clock.wallSeconds);
  return value;
}

tryClock clockOf(reading& top, const Json::Value& value) {
  if (!value.isObject()) {
    top.spoil();
    return {};
  }
  reading r(value);
  tryClock clock{r.text("boot"), r.number("since boot ms"), r.number("wall")};
  if (!r.ok()) top.spoil();
  return clock;
}

}  // namespace

std::string recordText(const tryRecord& record) {
  Json::Value value(Json::objectValue);
  value["id"] = record.id;
  value["phase"] = phaseWord(record.phase);
  value["reason"] = record.reason;
  value["config"] = record.config;
  value["config text"] = encoded(record.configText);
  value["timeout"] = Json::Int64(record.timeoutSeconds);
  value["deadline"] = clockValue(record.deadline);
  Json::Value& commands = value["confirm when"] = Json::Value(Json::arrayValue);
  for (const std::string& command : record.confirmWhen) commands.append(encoded(command));
  value["previous eth0"] = record.previousLinks.wired;
  value["previous wlan0"] = record.previousLinks.wireless;
  Json::Value& files = value["files"] = Json::Value(Json::arrayValue);
  for (const savedFile& file : record.files) {
    Json::Value entry(Json::objectValue);
    entry["path"] = file.path;
    entry["existed"] = file.existed;
    entry["content"] = encoded(file.content);
    entry["mode"] = Json::Int64(file.mode);
    entry["uid"] = Json::Int64(file.uid);
    entry["gid"] = Json::Int64(file.gid);
    files.append(entry);
  }
  return written(value);
}

std::optional<tryRecord> parseRecord(const std::string& text) {
  const std::optional<Json::Value> value = parsedObject(text);
  if (!value) return std::nullopt;
  reading r(*value);
  tryRecord record;
  record.id = r.text("id");
  const std::optional<tryPhase> phase = phaseOf(r.text("phase"));
  record.reason = r.text("reason");
  record.config = r.text("config");
  record.configText = r.bytes("config text");
  record.timeoutSeconds = static_cast<int>(r.number("timeout"));
  record.deadline = clockOf(r, (*value)["deadline"]);
  for (const Json::Value& command : r.list("confirm when")) {
    if (!command.isString()) return std::nullopt;
    record.confirmWhen.push_back(base64_decode(command.asString()));
  }
  record.previousLinks = {r.flag("previous eth0"), r.flag("previous wlan0")};
  for (const Json::Value& entry : r.list("files")) {
    if (!entry.isObject()) return std::nullopt;
    reading f(entry);
    savedFile file;
    file.path = f.text("path");
    file.existed = f.flag("existed");
    file.content = f.bytes("content");
    file.mode = static_cast<mode_t>(f.number("mode"));
    file.uid = static_cast<uid_t>(f.number("uid"));
    file.gid = static_cast<gid_t>(f.number("gid"));
    if (!f.ok()) return std::nullopt;
    record.files.push_back(file);
  }
  if (!r.ok() || !phase) return std::nullopt;
  record.phase = *phase;
  return record;
}

std::int64_t remainingMs(const tryClock& deadline, const tryClock& now) {
  if (deadline.bootId != now.bootId) return 0;
  const std::int64_t left = deadline.sinceBootMs - now.sinceBootMs;
  return left > 0 ? left : 0;
}

std::string outcomeText(const tryOutcome& outcome) {
  Json::Value value(Json::objectValue);
  value["id"] = outcome.id;
  value["result"] = outcome.result;
  value["config"] = outcome.config;
  value["reason"] = outcome.reason;
  value["wall"] = Json::Int64(outcome.wallSeconds);
  value["files print"] = outcome.filesPrint;
  return written(value);
}

std::optional<tryOutcome> parseOutcome(const std::string& text) {
  const std::optional<Json::Value> value = parsedObject(text);
  if (!value) return std::nullopt;
  reading r(*value);
  tryOutcome outcome{r.text("id"),     r.text("result"), r.text("config"),
                     r.text("reason"), r.number("wall"), r.text("files print")};
  if (!r.ok()) return std::nullopt;
  return outcome;
}

std::string fingerprint(const std::vector<std::string>& texts) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (const std::string& text : texts) {
    // The length first, so that texts cut elsewhere do not print alike.
    for (const char c : std::to_string(text.size()) + ":" + text) {
      hash ^= static_cast<unsigned char>(c);
      hash *= 0x100000001b3ULL;
    }
  }
  char hex[17];
  const int length =
      std::snprintf(hex, sizeof hex, "%016llx", static_cast<unsigned long long>(hash));
  return std::string(hex, length > 0 ? static_cast<std::size_t>(length) : 0);
}

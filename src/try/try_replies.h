#pragma once

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "check/finding.h"
#include "try/try_record.h"

// The words an answer starts with, and a try's outcomes.
inline constexpr char kResultPending[] = "pending";
inline constexpr char kResultConfirmed[] = "confirmed";
inline constexpr char kResultRolledBack[] = "rolled back";
inline constexpr char kResultRefused[] = "refused";
inline constexpr char kResultFailed[] = "failed";

// How a pending try stands, for --status.
struct pendingView {
  std::string config;
  std::int64_t remainingSeconds = 0;
  std::string phase;    // "pending", "confirmed", "rolling back"
  std::string watcher;  // "running", "stopped", "started again", "busy"
};

// A try applied and pending: `remainingSeconds` to confirm it, by --confirm or its `checks`.
void printPending(const std::string& config, std::int64_t remainingSeconds, std::size_t checks,
                  const std::vector<finding>& findings, bool json, std::ostream& out);

// A try that ended: "confirmed" (`reason`: how) or "rolled back" (`reason`: why).
void printEnded(const std::string& result, const std::string& config, const std::string& reason,
                bool json, std::ostream& out);

// Nothing was changed: "refused" or "failed" and why; the text form goes to `err` after the
// findings on `out`, the JSON form (with the findings where `withFindings`) to `out`.
void printRefusal(const std::string& result, const std::string& reason, const std::string& config,
                  const std::vector<finding>& findings, bool withFindings, bool json,
                  std::ostream& out, std::ostream& err);

// --status: the pending try, if any, and the outcome of the last one.
void printStatus(const std::optional<pendingView>& pending, const std::optional<tryOutcome>& last,
                 bool json, std::ostream& out);

// A wall-clock time as "2026-11-24 11:58:02 UTC" (`iso`: "2026-11-24T11:58:02Z").
std::string utcTime(std::int64_t wallSeconds, bool iso);

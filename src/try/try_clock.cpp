#include "try/try_clock.h"

#include <time.h>

#include <fstream>

namespace {

constexpr const char* kBootIdPath = "/proc/sys/kernel/random/boot_id";
constexpr std::int64_t kMsPerSecond = 1000;
constexpr std::int64_t kNsPerMs = 1000000;

}  // namespace

tryClock clockNow() {
  tryClock now;
  std::ifstream bootId(kBootIdPath);
  std::getline(bootId, now.bootId);
  timespec sinceBoot{};
  ::clock_gettime(CLOCK_BOOTTIME, &sinceBoot);
  now.sinceBootMs = sinceBoot.tv_sec * kMsPerSecond + sinceBoot.tv_nsec / kNsPerMs;
  now.wallSeconds = ::time(nullptr);
  return now;
}

tryClock clockAfter(const tryClock& clock, std::int64_t milliseconds) {
  tryClock later = clock;
  later.sinceBootMs += milliseconds;
  later.wallSeconds += (milliseconds + kMsPerSecond - 1) / kMsPerSecond;
  return later;
}

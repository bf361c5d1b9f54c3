#include "wireless/signal_reading.h"

#include <climits>
#include <cmath>
#include <cstdlib>

#include "common/text.h"

namespace {

constexpr long kFullStrengthDbm = -49;

// The board converts to int by saturating, and turns NaN (a 0/0 reading) into 0.
int truncateLikeTheBoard(double value) {
  if (std::isnan(value)) return 0;
  if (value >= static_cast<double>(INT_MAX)) return INT_MAX;
  if (value <= static_cast<double>(INT_MIN)) return INT_MIN;
  return static_cast<int>(value);
}

}  // namespace

void eraseThroughMarker(std::string& text, const char* marker, std::size_t count) {
  const std::size_t position = text.find(marker);
  if (position != std::string::npos) eraseFront(text, position + count);
}

int percentFromDbm(std::string reading) {
  reading.erase(reading.find("dBm"), 3);
  const long dbm = std::strtol(reading.c_str(), nullptr, 10);
  if (dbm >= kFullStrengthDbm) return 100;
  return truncateLikeTheBoard(2.0 * (static_cast<double>(dbm) + 100.0));
}

int percentFromQuality(const std::string& reading) {
  const std::size_t slash = reading.find('/');
  const double quality = std::strtod(reading.c_str(), nullptr);
  const double scale = std::strtod(
      slash == std::string::npos ? reading.c_str() : reading.c_str() + slash + 1, nullptr);
  // Scaled before dividing so that N/100 reads as exactly N.
  return truncateLikeTheBoard(std::trunc(quality * 100.0 / scale));
}

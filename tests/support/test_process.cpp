#include <string>

#include "common/back_end.h"
#include "common/run_log.h"

// Unit tests reach the fatal paths on purpose: their lines must not end up in the log of the
// machine running the tests.
namespace {

void dropLine(int, const std::string&) {}

const LogSender kRealSender = installLogSender(dropLine);

// A machine running NetworkManager must not turn the ifupdown tests into tests of the other
// back end; tests of that one pin it themselves.
const bool kIfupdownPinned = [] {
  pinRunBackEnd(BackEnd::ifupdown);
  return true;
}();

}  // namespace

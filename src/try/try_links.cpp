#include "try/try_links.h"

#include <unistd.h>

#include <cstdio>
#include <iostream>

#include "common/back_end.h"
#include "common/nmcli.h"
#include "common/run_log.h"
#include "generate/nm_profile.h"
#include "link/probes.h"
#include "link/switching.h"

namespace {

// What ifup and ifdown print is theirs, not an answer of the companion's: it goes to the error
// stream while they run.
class UtilitiesOnStderr {
 public:
  UtilitiesOnStderr() {
    std::cout.flush();
    // A stream that cannot be flushed has nothing to lose to the switch.
    static_cast<void>(std::fflush(stdout));
    saved_ = ::dup(STDOUT_FILENO);
    if (saved_ >= 0) ::dup2(STDERR_FILENO, STDOUT_FILENO);
  }
  ~UtilitiesOnStderr() {
    if (saved_ < 0) return;
    static_cast<void>(std::fflush(stdout));
    ::dup2(saved_, STDOUT_FILENO);
    ::close(saved_);
  }
  UtilitiesOnStderr(const UtilitiesOnStderr&) = delete;
  UtilitiesOnStderr& operator=(const UtilitiesOnStderr&) = delete;

 private:
  int saved_;
};

}  // namespace

LinkWishes linksUpNow() {
  // NetworkManager keeps every link it manages up to watch its carrier: there a link is up when
  // its profile is active.
  if (runBackEnd() == BackEnd::networkManager) {
    return {profileActive(kWiredProfile), profileActive(kWirelessProfile)};
  }
  return {isEnabledWired(silentMode), isEnabledWireless(silentMode)};
}

void takeLinksDown() {
  const UtilitiesOnStderr quiet;
  disconnectEthernet(silentMode);
  disconnectWifi(silentMode);
  // Taking down the files' links is a step of the change, not an outcome of it.
  takeNotedOutcomes();
}

std::vector<std::string> bringLinks(const LinkWishes& wishes) {
  takeNotedOutcomes();
  const UtilitiesOnStderr quiet;
  reachLinkWishes(wishes, silentMode, std::cout);
  return takeNotedOutcomes();
}

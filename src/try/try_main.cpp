#include <iostream>
#include <string>
#include <vector>

#include "common/run_log.h"
#include "credentials/cipher_key.h"
#include "try/try_actions.h"
#include "try/try_options.h"
#include "try/try_steps.h"

int main(int argc, char* argv[]) {
  setLogIdentity("qv-netconf-try");
  std::string problem;
  const std::optional<tryOptions> options =
      parseTryOptions(std::vector<std::string>(argv + 1, argv + argc), problem);
  if (!options) {
    std::cerr << "qv-netconf-try: " << problem << "\n";
    printTryUsage(std::cerr);
    return kTryUsage;
  }
  loadCipherKey();
  TryStore store;
  switch (options->action) {
    case tryAction::help:
      printTryUsage(std::cout);
      return kTryDone;
    case tryAction::confirm:
      return confirmTry(options->json, store, std::cout, std::cerr);
    case tryAction::rollback:
      return rollbackTry(options->json, store, std::cout, std::cerr);
    case tryAction::status:
      return tryStatus(options->json, store, std::cout);
    case tryAction::boot:
      return bootTry(store, std::cout);
    case tryAction::watch:
      return watchTry(store);
    default:
      return startTry(*options, store, std::cout, std::cerr);
  }
}

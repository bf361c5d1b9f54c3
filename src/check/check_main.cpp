#include <string>
#include <vector>

#include "check/check_command.h"

int main(int argc, char* argv[]) {
  return runCheck(std::vector<std::string>(argv + 1, argv + argc));
}

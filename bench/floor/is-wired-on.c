#include "floor.h"

int main(void) {
  LastMatch line = {"eth0", ""};
  readCommand("ifconfig", 100, keepLastMatch, &line);
  fputs(line.last[0] != '\0' ? "true" : "false", stdout);
  return 0;
}

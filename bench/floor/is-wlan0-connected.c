#include "floor.h"

int main(void) {
  fputs(wlan0Up() ? "true" : "false", stdout);
  return 0;
}

#include <stdlib.h>

#include "floor.h"
#include "replies.h"

int main(void) {
  const int wasDown = system("ifconfig | grep wlan0 > /dev/null") != 0;
  system("sudo ifconfig wlan0 up");
  system("rfkill unblock all");
  readCommand("sudo iwlist wlan0 scan", 100, NULL, NULL);
  if (wasDown) system("sudo ifconfig wlan0 down");
  /* Rendering the list is the tool's own work; the floor prints the reply it must give. */
  fputs(kWifiListReply, stdout);
  return 0;
}

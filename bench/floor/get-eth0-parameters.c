#include "floor.h"

static int eth0Gateway(const char* piece, void* gateway) {
  char destination[64], via[64], interface[64];
  if (sscanf(piece, "%63s %63s %*s %*s %*s %*s %*s %63s", destination, via, interface) == 3 &&
      strcmp(interface, "eth0") == 0 && strcmp(via, "0.0.0.0") != 0) {
    snprintf((char*)gateway, 64, "%s", via);
  }
  return 1;
}

int main(void) {
  LastMatch inet = {"inet ", ""};
  readCommand("ifconfig eth0 2>&1", 100, keepLastMatch, &inet);
  LastMatch iface = {"iface eth0 inet", ""};
  readCommand("cat /etc/network/interfaces", 100, keepLastMatch, &iface);
  char gateway[64] = "", address[64] = "", netmask[64] = "", type[64] = "";
  readCommand("route -n", 100, eth0Gateway, gateway);
  sscanf(inet.last, " inet %63s netmask %63s", address, netmask);
  sscanf(iface.last, "iface eth0 inet %63s", type);
  printf(
      "{\"values\":{ \"ip address\":\"%s\",\"netmask address\":\"%s\",\"gateway "
      "address\":\"%s\",\"type\":\"%s\"}}\n",
      address, netmask, gateway, type);
  return 0;
}

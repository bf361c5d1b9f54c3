#include "floor.h"
#include "replies.h"

static void readFile(const char* path) {
  FILE* file = fopen(path, "r");
  if (file == NULL) return;
  char buffer[100];
  while (fgets(buffer, sizeof buffer, file) != NULL) continue;
  fclose(file);
}

/* Rendering the files is the tool's own work; the floor writes the texts it must write. */
int main(int argc, char** argv) {
  if (argc < 4) return 1;
  lockWriters();
  readFile(argv[3]);
  writeFile("/etc/network/interfaces", kInterfacesFile, 0644);
  writeFile("/etc/resolv.conf", kResolvFile, 0644);
  readCommand("/usr/bin/qv-get-freq-list 5", 200, NULL, NULL);
  readCommand("wpa_passphrase 'Office-5G' 'correct horse battery'", 100, NULL, NULL);
  writeFile("/etc/wpa_supplicant/wpa_supplicant.conf", kWpaFile, 0600);
  readCommand("echo -n '' | iconv -t utf16le | openssl md4", 100, NULL, NULL);
  writeFile("/etc/wpa_supplicant/wpa_supplicant_wired.conf", kWpaWiredFile, 0600);
  readFile("/etc/dhcpcd.conf");
  writeFile("/etc/dhcpcd.conf", kDhcpcdFile, 0644);
  return 0;
}

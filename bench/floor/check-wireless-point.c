#include <stdlib.h>

#include "floor.h"

typedef struct {
  char essid[256];
  char quality[256];
} WirelessLines;

static int keepWirelessLines(const char* piece, void* context) {
  WirelessLines* lines = (WirelessLines*)context;
  if (strstr(piece, "ESSID") != NULL) snprintf(lines->essid, sizeof lines->essid, "%s", piece);
  if (strstr(piece, "Link Quality") != NULL) {
    snprintf(lines->quality, sizeof lines->quality, "%s", piece);
  }
  return 1;
}

int main(void) {
  if (!wlan0Up()) {
    fputs("{\"values\":{\"status\":\"false\"}}\n", stdout);
    return 0;
  }
  WirelessLines lines = {"", ""};
  readCommand("iwconfig wlan0", 100, keepWirelessLines, &lines);
  char name[64] = "";
  const char* quote = strchr(lines.essid, '"');
  if (quote != NULL) sscanf(quote + 1, "%63[^\"]", name);
  int dbm = 0;
  const char* level = strstr(lines.quality, "Signal level=");
  if (level != NULL) dbm = atoi(level + strlen("Signal level="));
  printf("{\"values\":{\"status\":\"true\",\"ssid\":\"%s\",\"signal strength\":\"%d\"}}\n", name,
         dbm >= -49 ? 100 : 2 * (dbm + 100));
  return 0;
}

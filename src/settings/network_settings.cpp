#include "settings/network_settings.h"

networkSettings settingsTab;
bool ethernetPassThrough = false;
passThroughCredentials ethernetPassThroughCredentials;
bool openWiredConfig = false;

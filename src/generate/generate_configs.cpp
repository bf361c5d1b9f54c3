#include "generate/generate_configs.h"

#include "common/back_end.h"
#include "generate/dhcpcd_file.h"
#include "generate/interfaces_file.h"
#include "generate/nm_files.h"
#include "generate/resolv_file.h"
#include "generate/wpa_conf.h"
#include "generate/wpa_wired_conf.h"

void generateConfigs(UserMode mode, std::ostream& out, std::ostream& err) {
  if (runBackEnd() == BackEnd::networkManager) {
    generateNetworkManagerFiles(true, mode, out, err);
    return;
  }
  generateInterfacesFile(mode, out, err);
  generateResolvFile(mode, out, err);
  generateWpaConf(mode, out, err);
  generateWpaWiredConf(mode, out, err);
  generateDhcpcdConf(mode, out, err);
}

void generateWirelessConfig(UserMode mode, std::ostream& out, std::ostream& err) {
  if (runBackEnd() == BackEnd::networkManager) {
    generateNetworkManagerFiles(false, mode, out, err);
    return;
  }
  generateWpaConf(mode, out, err);
}

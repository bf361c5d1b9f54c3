#include "generate/generate_configs.h"

#include "generate/dhcpcd_file.h"
#include "generate/interfaces_file.h"
#include "generate/resolv_file.h"
#include "generate/wpa_conf.h"
#include "generate/wpa_wired_conf.h"

void generateConfigs(UserMode mode, std::ostream& out, std::ostream& err) {
  generateInterfacesFile(mode, out, err);
  generateResolvFile(mode, out, err);
  generateWpaConf(mode, out, err);
  generateWpaWiredConf(mode, out, err);
  generateDhcpcdConf(mode, out, err);
}

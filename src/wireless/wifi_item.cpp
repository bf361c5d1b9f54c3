#include "wireless/wifi_item.h"

#include <iomanip>

namespace {

template <typename Value>
void field(std::ostream& out, int width, const Value& value) {
  out << std::left << std::setw(width) << value;
}

}  // namespace

void wifiItem::printItem(UserMode mode, std::ostream& out) const {
  if (mode == consoleMode) {
    field(out, 6, "Ssid: ");
    field(out, 32, ssid);
    out << " ";
    field(out, 15, "Signal strength: ");
    field(out, 5, signalStrength);
    out << " ";
    field(out, 15, "Authentication: ");
    field(out, 7, authentication);
    out << " ";
    field(out, 7, "Encryption: ");
    field(out, 4, encryption);
    out << " ";
    field(out, 7, "Pairwise: ");
    field(out, 9, pairwise);
    out << " ";
    field(out, 10, "Encryption ver: ");
    field(out, 10, encryptionVer);
    out << " ";
    field(out, 10, "Frequency: ");
    field(out, 6, frequency);
    field(out, 10, "Channel: ");
    field(out, 6, channel);
  } else if (mode == applicationMode) {
    out << "{ \"ssid\":\"" << ssid << "\",\"signal strength\":" << signalStrength
        << ",\"encryption\":\"" << encryption << "\",\"authentication\":\"" << authentication
        << "\",\"encryption ver\":\"" << encryptionVer << "\",\"pairwise\":\"" << pairwise
        << "\",\"frequency\":\"" << frequency << "\",\"channel\":" << channel << "}";
  }
}

#pragma once

#include <iostream>

#include "common/user_mode.h"
#include "link/interface_status.h"

// Reports address, netmask, gateway and configuration type of one interface into
// interfaceValues and prints them: 18/12-column lines in console mode, one JSON object in
// application mode. An interface without an address gets the not-connected form. An address
// line with too few words ends the run abnormally (std::out_of_range is left uncaught).
void getInterfaceValues(UserMode mode, UserInterfaces which, std::ostream& out = std::cout);

// Reports the gateway of the first default route, or that none is known.
void getDefaultGateway(UserMode mode, std::ostream& out = std::cout);

// Reports the inner address of the established "ipsec-vpn" tunnel in the interface report's
// form, or that IPsec is not connected.
void getIpsecValues(UserMode mode, std::ostream& out = std::cout);

#pragma once

// The IPsec daemon's status, errors folded in so that a daemon that is not running reads as
// plain text that matches nothing.
constexpr const char* kIpsecStatus = "sudo ipsec status 2>&1";

#pragma once

#include <functional>
#include <string>

#include "generate/supplicant_services.h"

// Lines the wireless and the wired supplicant files share.

// The two header lines and the opening of the network block.
extern const char* const kSupplicantHead;
// The closing of the network block.
extern const char* const kSupplicantTail;

// "\teap=..." for "peap", "ttls" or "tls"; nothing for any other method.
std::string eapLine(const std::string& method);

// The ca_cert line, or nothing without a certificate file.
std::string caCertLine(const std::string& caCertificate);

// The credential lines that end an enterprise block: for "peap" and "ttls" the password hash
// that `hash` gives (PEAP with its phase lines), for "tls" the private key and its password in
// clear. `hash` is called only when a hash line is written.
std::string credentialLines(const std::string& method, const std::function<std::string()>& hash,
                            const std::string& pkcs12Certificate, const std::string& pkcs12Password,
                            const char* group, SupplicantServices& services);

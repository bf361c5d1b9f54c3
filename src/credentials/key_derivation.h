#pragma once

#include <iostream>
#include <string>
#include <vector>

#include "common/user_mode.h"

// The MD4 digest of nothing: the NT hash of an empty password.
constexpr const char* kEmptyPasswordHash = "31d6cfe0d16ae931b73c59d7e0c089c0";

// `text` with every single quote turned into '"'"', so that between single quotes it reaches a
// utility as one literal argument.
std::string quoteForShell(const std::string& text);

// The key that wpa_passphrase's output pieces give: the last piece holding "psk" that is not a
// comment, without blanks, quotes, tabs, line feeds and its "psk=" prefix.
std::string pskFromPieces(const std::vector<std::string>& pieces);

// The digest of the hashing pipeline's "(stdin)" piece: everything after its first "=", blanks
// and line feeds removed; kEmptyPasswordHash when the piece holds no "=".
std::string hashFromDigestPiece(std::string piece);

// The WPA pre-shared key of `ssid` and `passphrase` as 64 hex digits, from wpa_passphrase;
// empty when the utility prints no key (a pass phrase outside 8 to 63 characters).
std::string generatePsk(std::string ssid, std::string passphrase, UserMode mode,
                        std::ostream& out = std::cout);

// The NT hash of `password` (MD4 of its UTF-16LE form) from echo | iconv | openssl md4;
// kEmptyPasswordHash when the pipeline prints no digest.
std::string generateHashWpaPassword(std::string password, UserMode mode,
                                    std::ostream& out = std::cout);

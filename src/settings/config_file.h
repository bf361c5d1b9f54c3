#pragma once

#include <json/json.h>

#include <string>

// The parsed config.json of the run and the reader that parsed it.
extern Json::Value root;
extern Json::Reader reader;

// Opens `path` for binary reading and parses it into `root` with `reader`, comments not kept.
// False when the file cannot be opened or read (a directory, say) or is not valid JSON, and
// also when the JSON library throws (nesting deeper than its reader allows).
bool parseConfigJson(const std::string& path);

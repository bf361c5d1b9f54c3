#pragma once

#include <functional>
#include <iostream>
#include <string>

#include "common/user_mode.h"
#include "generate/output_file.h"

// Opens `path` for writing (truncated), writes what `render` returns and closes it. `render`
// runs while the file is open and empty, so a run that ends inside it leaves the file empty. A
// file that cannot be opened ends the run with status 1; in console mode an error line names it.
void writeGeneratedFile(const std::string& path, FileAccess access,
                        const std::function<std::string()>& render, UserMode mode,
                        std::ostream& err);

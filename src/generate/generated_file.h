#pragma once

#include <functional>
#include <iostream>
#include <string>

#include "common/user_mode.h"
#include "generate/file_replacement.h"

// Replaces `path` with what `render` returns (see FileReplacement). A file that cannot be opened
// ends the run with status 1 before `render` runs, so nothing is derived for it; in console mode
// an error line names it. A run that ends inside `render` leaves the file as it was.
void writeGeneratedFile(const std::string& path, FileAccess access,
                        const std::function<std::string()>& render, UserMode mode,
                        std::ostream& err);

// Puts `text` in place through `file`; a failing write, sync or rename ends the run with status 1
// (console mode: a line on `err` naming `path` and the system's reason), the file unchanged.
void commitGeneratedFile(FileReplacement& file, const std::string& path, const std::string& text,
                         UserMode mode, std::ostream& err);

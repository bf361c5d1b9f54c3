#pragma once

#include <string>
#include <vector>

#include "try/try_record.h"

// The files the tool writes, in the order it writes them: the five of the ifupdown stack, then
// the two NetworkManager profiles.
const std::vector<std::string>& networkFilePaths();

// The file at `path` as it is now (read where its links lead): content, bits and owner, or that
// there is none. 0 or the errno that kept it from being read whole.
int captureFile(const std::string& path, savedFile& saved);

// Whether the file at `saved.path` is already exactly as saved.
bool isAsSaved(const savedFile& saved);

// Puts the file back as saved, replaced whole with its owner and bits as they were, or removed
// where there was none; nothing is written where it already is as saved. 0 or an errno.
int restoreFile(const savedFile& saved);

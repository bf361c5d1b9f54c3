#include "generate/generated_file.h"

#include <cstring>

#include "common/run_log.h"

void writeGeneratedFile(const std::string& path, FileAccess access,
                        const std::function<std::string()>& render, UserMode mode,
                        std::ostream& err) {
  FileReplacement file(path, access);
  if (!file.isOpen()) {
    const std::string reason = std::strerror(file.openError());
    if (mode == consoleMode) {
      err << "Error: File " << path << " cannot be opened or not exist!" << std::endl;
    }
    failRun("cannot open " + path + " for writing: " + reason);
  }
  commitGeneratedFile(file, path, render(), mode, err);
}

void commitGeneratedFile(FileReplacement& file, const std::string& path, const std::string& text,
                         UserMode mode, std::ostream& err) {
  const int error = file.commit(text);
  if (error == 0) {
    noteFileReplaced(path);
    return;
  }
  if (mode == consoleMode) {
    err << "Error: File " << path << " cannot be written: " << std::strerror(error) << "!"
        << std::endl;
  }
  failRun("cannot write " + path + ": " + std::strerror(error));
}

#include "generate/generated_file.h"

#include <cstdlib>
#include <cstring>

void writeGeneratedFile(const std::string& path, FileAccess access,
                        const std::function<std::string()>& render, UserMode mode,
                        std::ostream& err) {
  FileReplacement file(path, access);
  if (!file.isOpen()) {
    if (mode == consoleMode) {
      err << "Error: File " << path << " cannot be opened or not exist!" << std::endl;
    }
    std::exit(1);
  }
  commitGeneratedFile(file, path, render(), mode, err);
}

void commitGeneratedFile(FileReplacement& file, const std::string& path, const std::string& text,
                         UserMode mode, std::ostream& err) {
  const int error = file.commit(text);
  if (error == 0) return;
  if (mode == consoleMode) {
    err << "Error: File " << path << " cannot be written: " << std::strerror(error) << "!"
        << std::endl;
  }
  std::exit(1);
}

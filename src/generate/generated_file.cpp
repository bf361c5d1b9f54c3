#include "generate/generated_file.h"

#include <cstdlib>

void writeGeneratedFile(const std::string& path, FileAccess access,
                        const std::function<std::string()>& render, UserMode mode,
                        std::ostream& err) {
  OutputFile file(path, access);
  if (!file.isOpen()) {
    if (mode == consoleMode) {
      err << "Error: File " << path << " cannot be opened or not exist!" << std::endl;
    }
    std::exit(1);
  }
  file.write(render());
}

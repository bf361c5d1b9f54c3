#include "generate/generated_file.h"

#include <cerrno>
#include <cstring>

#include "common/run_log.h"

void writeGeneratedFile(const std::string& path, FileAccess access,
                        const std::function<std::string()>& render, UserMode mode,
                        std::ostream& err) {
  OutputFile file(path, access);
  if (!file.isOpen()) {
    const std::string reason = std::strerror(errno);
    if (mode == consoleMode) {
      err << "Error: File " << path << " cannot be opened or not exist!" << std::endl;
    }
    failRun("cannot open " + path + " for writing: " + reason);
  }
  file.write(render());
  noteFileReplaced(path);
}

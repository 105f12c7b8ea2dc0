// pmi_report: the product manufacturing information of CAD models, as a plug-in answers it.
#include <fcntl.h>

#include <clocale>
#include <csignal>
#include <filesystem>

#include "Session.h"

namespace fs = std::filesystem;

namespace {

// A file that comes with the program, by its path from the program's folder.
std::string Beside(const char* path) {
  return (fs::read_symlink("/proc/self/exe").parent_path() / path).lexically_normal().string();
}

// Opens closed standard streams, or the next file that is opened would take their place.
void KeepStandardStreams() {
  for (int stream = 0; stream <= 2; ++stream) {
    if (fcntl(stream, F_GETFD) < 0 && open("/dev/null", stream == 0 ? O_WRONLY : O_RDONLY) < 0) {
      return;
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  KeepStandardStreams();
  std::setlocale(LC_CTYPE, "C.UTF-8");
  // A closed pipe and a file that grows too large are then errors of writing.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  int exitCode = 0;
  std::optional<Options> options = ParseCommandLine(argc, argv, exitCode);
  if (!options) return exitCode;
  try {
    if (options->models.empty()) options->models.push_back(Beside(BUNDLED_MODEL));
    if (options->plugin.empty()) options->plugin = Beside(PLUGIN);
    return Session(*options).Run();
  } catch (const PluginError& error) {
    Say(error.what());
    return kExitBadPlugin;
  } catch (const std::exception& error) {
    Say(error.what());
    return kExitNotWritten;
  }
}

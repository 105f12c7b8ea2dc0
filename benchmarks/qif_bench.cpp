// Reading a document and reporting on it, whole processes by the clock on the wall.
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "Measure.h"

namespace {

// The largest of the models beside the project, or the bundled one.
std::filesystem::path Model() {
  std::filesystem::path largest = BUNDLED_MODEL;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator(MODELS, none)) {
    if (entry.path().extension() == ".qif" &&
        entry.file_size() > std::filesystem::file_size(largest)) {
      largest = entry.path();
    }
  }
  return largest;
}

double ProcessSeconds(std::vector<std::string> command) {
  std::vector<char*> arguments;
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t silent;
  posix_spawn_file_actions_init(&silent);
  posix_spawn_file_actions_addopen(&silent, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&silent, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  const auto start = std::chrono::steady_clock::now();
  pid_t child = 0;
  int status = -1;
  if (posix_spawn(&child, arguments[0], &silent, nullptr, arguments.data(), environ) == 0) {
    waitpid(child, &status, 0);
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  posix_spawn_file_actions_destroy(&silent);
  if (status != 0) throw std::runtime_error(command[0] + " failed");
  return taken.count();
}

void Report(benchmark::State& state, const std::string& model, bool json) {
  std::vector<std::string> report = {PMI_REPORT, model};
  if (json) report.push_back("--json");
  try {
    measure::Compare(
        state, 1, [&] { return ProcessSeconds(report); },
        [&] {
          return ProcessSeconds({QIF_PARSE, model});
        });
  } catch (const std::runtime_error& error) {
    state.SkipWithError(error.what());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::filesystem::path model = Model();
  for (const bool json : {false, true}) {
    measure::Register("qif:" + model.filename().string() + (json ? " as JSON" : " as text"), 15,
                      [=](auto& state) { Report(state, model.string(), json); });
  }
  return measure::Run(argc, argv);
}

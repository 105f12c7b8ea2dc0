#include "Output.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

// The unfinished file, which a signal handler removes before the program ends.
char unfinished[4096];

void TakeAwayAndEnd(int signal) {
  unlink(unfinished);
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

bool IsSameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

}  // namespace

Output::Output(const std::string& path) : name_(path) {
  struct stat there {};
  struct stat standard {};
  if (path.empty() || path == "-") {
    name_ = "standard output";
    return;
  }
  const bool exists = stat(path.c_str(), &there) == 0;
  if (exists && fstat(1, &standard) == 0 && IsSameFile(there, standard)) return;
  if (exists && !S_ISREG(there.st_mode)) {
    file_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (file_ < 0) Fail(errno);
    return;
  }
  if (exists && access(path.c_str(), W_OK) != 0) Fail(errno);
  const mode_t mask = umask(0);
  umask(mask);
  mode_ = exists ? there.st_mode & 0777U : 0666U & ~mask;
  std::error_code error;
  fs::path target = path;
  if (exists) {
    target = fs::canonical(target, error);
  } else {
    // A link to a file that does not exist yet. The folder has to exist.
    if (fs::is_symlink(target, error)) target = target.parent_path() / fs::read_symlink(path);
    const fs::path folder = target.has_parent_path() ? target.parent_path() : ".";
    target = fs::canonical(folder, error) / target.filename();
  }
  if (error) Fail(error.value());
  target_ = target.string();
  MakeTemporary();
}

void Output::MakeTemporary() {
  const fs::path target(target_);
  std::string name = (target.parent_path() / ".pmi_report.XXXXXX").string();
  file_ = mkostemp(name.data(), O_CLOEXEC);
  if (file_ < 0) Fail(errno);
  temporary_ = name;
  if (name.size() < sizeof unfinished) {
    std::strcpy(unfinished, name.c_str());
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
      // A signal that was ignored when the program started stays ignored.
      if (std::signal(signal, TakeAwayAndEnd) == SIG_IGN) std::signal(signal, SIG_IGN);
    }
  }
}

Output::~Output() {
  if (file_ > 2) close(file_);
  if (!temporary_.empty()) unlink(temporary_.c_str());
  unfinished[0] = '\0';
}

void Output::Fail(int error) const {
  throw OutputError("cannot write " + name_ + ": " + std::strerror(error));
}

void Output::Write(const std::string& text) {
  for (std::size_t at = 0; at < text.size();) {
    const ssize_t count = write(file_, text.data() + at, text.size() - at);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) Fail(errno);
    at += static_cast<std::size_t>(count);
  }
  written_ = written_ || !text.empty();
}

void Output::Finish() {
  if (temporary_.empty() || !written_) return;
  if (fchmod(file_, mode_) != 0 || fsync(file_) != 0) Fail(errno);
  if (rename(temporary_.c_str(), target_.c_str()) != 0) Fail(errno);
  temporary_.clear();
  unfinished[0] = '\0';
}

bool Output::IsTerminal() const { return isatty(file_) != 0; }

bool Output::ShowsColour() const {
  const char* noColour = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  return IsTerminal() && (noColour == nullptr || *noColour == '\0') && terminal != nullptr &&
         std::strcmp(terminal, "dumb") != 0;
}

#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "HostDocuments.h"
#include "SavedReports.h"

// The program as people run it, in a folder of the test's own.

struct Outcome {
  int code;
  std::string out, err;
  // Whether there is a report, of whatever severity the losses are.
  bool Reported() const { return code == 0 || code == 4; }
};

class HostProgram : public testing::Test {
 protected:
  HostProgram()
      : folder_(std::filesystem::temp_directory_path() /
                ("pmi_report_" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder_);
  }
  ~HostProgram() override { std::filesystem::remove_all(folder_); }

  // What a command of the shell gives; in it, $P is the program and $F the folder.
  Outcome Shell(const std::string& command) {
    const std::string out = folder_ / "out";
    const std::string err = folder_ / "err";
    const int status = std::system(("P='" PROGRAM "' F='" + folder_.string() + "'; { " + command +
                                    "\n} >'" + out + "' 2>'" + err + "'")
                                       .c_str());
    return {WEXITSTATUS(status), Read(out), Read(err)};
  }
  Outcome Run(const std::string& arguments) {
    Outcome outcome = Shell("\"$P\" " + arguments);
    if (outcome.out.rfind('{', 0) == 0) SaveReport(outcome.out);
    return outcome;
  }
  // A file with `text`; its path.
  std::string File(const std::string& name, const std::string& text) {
    std::ofstream(folder_ / name, std::ios::binary) << text;
    return folder_ / name;
  }
  // The bundled model with its first `from` become `to`.
  std::string Edited(const std::string& from, const std::string& to) {
    return File("edited.qif", With(Read(BUNDLED_MODEL), from, to));
  }

  std::filesystem::path folder_;
};

// The program's exit code for a document, with so many bytes to allocate: 1 when they are too few.
inline int CodeWithin(double bytes, const std::string& text) {
  const std::string path =
      std::filesystem::temp_directory_path() / ("memory" + std::to_string(getpid()));
  std::ofstream(path, std::ios::binary) << text;
  const std::string limit = "ulimit -v " + std::to_string(static_cast<long>(bytes / 1024));
  const std::string run = limit + "; " PROGRAM " --json " + path + " >/dev/null 2>/dev/null";
  const int status = std::system(run.c_str());
  std::filesystem::remove(path);
  return WEXITSTATUS(status);
}

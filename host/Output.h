#pragma once

#include <stdexcept>
#include <string>

// Why the output could not be written; one line.
class OutputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Where reports go: standard output, or a file that is replaced whole or not at all.
//
// A file is written under another name in its folder and takes its name's place when it is
// finished; until then, and when anything fails, what was there before stays. It keeps the
// permissions of what it replaces. The target of a symbolic link is replaced, the link stays. A
// pipe, /dev/stdout or anything else that is not a regular file is written to directly.
class Output {
 public:
  // An empty path or "-" is standard output. Throws OutputError.
  explicit Output(const std::string& path);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  // Removes an unfinished file.
  ~Output();

  // Throws OutputError.
  void Write(const std::string& text);
  // Moves the file to its place; when nothing was written, leaves the old one. Throws OutputError.
  void Finish();
  bool IsTerminal() const;
  // Whether it is a terminal that shows colours; false when NO_COLOR or TERM=dumb forbids them.
  bool ShowsColour() const;

 private:
  [[noreturn]] void Fail(int error) const;
  void MakeTemporary();

  std::string name_;       // for messages
  std::string target_;     // the file to replace; empty for standard output and devices
  std::string temporary_;  // the unfinished file; empty when there is none
  int file_ = 1;
  unsigned mode_ = 0;
  bool written_ = false;
};

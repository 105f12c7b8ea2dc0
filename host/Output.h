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
// permissions of what it replaces. A symbolic link stays one: what it names is replaced. What is no
// regular file, such as a pipe or /dev/stdout, is written straight away.
class Output {
 public:
  // An empty path or "-" is standard output. Throws OutputError.
  explicit Output(const std::string& path);
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;
  // Takes an unfinished file away.
  ~Output();

  // Throws OutputError.
  void Write(const std::string& text);
  // Puts the file in its place; when nothing was written, leaves what is there. Throws OutputError.
  void Finish();
  bool IsTerminal() const;
  // Whether it is a terminal that shows colours, and nobody asked for none (NO_COLOR, TERM=dumb).
  bool ShowsColour() const;

 private:
  [[noreturn]] void Fail(int error) const;
  void MakeTemporary();

  std::string name_;       // for messages
  std::string target_;     // the file to replace; empty when there is none
  std::string temporary_;  // what is written until then; empty when there is none
  int file_ = 1;
  unsigned mode_ = 0;
  bool written_ = false;
};

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "checks/Check.h"
#include "report/Select.h"
#include "writers/text/PrintText.h"

inline constexpr const char* kProgram = "pmi_report " VERSION;

struct Options {
  std::vector<std::string> models;  // paths, or "-" for standard input; empty for the bundled model
  std::string plugin;               // empty for the one that comes with the program
  std::string output;               // empty for standard output
  std::string html;                 // where the page goes; empty for none
  bool json = false, qif = false, summary = false, strict = false, check = false;
  checks::Choice rules;  // what is checked
  Selection selection;
  text::Style style;  // without colour and selection
};

// Parses the command line. Without a value the program has to end with `exitCode`: 0 after --help,
// --version and --rules, which are printed; 100 or more after invalid arguments, with a message on
// standard error.
std::optional<Options> ParseCommandLine(int argc, char** argv, int& exitCode);

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "report/Select.h"
#include "writers/text/PrintText.h"

inline constexpr const char* kProgram = "pmi_report " VERSION;

struct Options {
  std::vector<std::string> models;  // paths, or "-" for standard input; empty for the bundled model
  std::string plugin;               // empty for the one that comes with the program
  std::string output;               // empty for standard output
  bool json = false, summary = false, strict = false;
  Selection selection;
  text::Style style;  // without colour
};

// What a command line asks for. Without a value the program is to end with `exitCode`: after help
// and version, which are then printed, with 0; after invalid arguments, which are then told on
// standard error, with 100 or more.
std::optional<Options> ParseCommandLine(int argc, char** argv, int& exitCode);

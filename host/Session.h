#pragma once

#include "CommandLine.h"
#include "Output.h"
#include "plugin/PluginLibrary.h"
#include "writers/text/Table.h"

// What the program ends with; of several models' codes, the one that stands first here counts.
enum ExitCode {
  kExitNotWritten = 1,
  kExitBadPlugin = 3,
  kExitBadModel = 2,
  kExitLost = 4,
  kExitGood = 0,
};

// Reports on the models of a command line, one after the other, and goes on after a bad one.
class Session {
 public:
  // Throws PluginError or OutputError. REQUIRES: `options` outlive the session and name models and
  // a plug-in.
  explicit Session(const Options& options);

  // Throws OutputError.
  ExitCode Run();

 private:
  // A report, or why there is none.
  struct Answer {
    std::optional<ModelReport> report;
    ExitCode code = kExitGood;
    std::string message;
  };
  Answer Ask(const std::string& model) const;
  ExitCode Write(const ModelReport& report);
  void WriteRefused(const std::string& file, const std::string& message);
  void WriteJson(const std::string& json);

  const Options& options_;
  const PluginLibrary plugin_;
  const bool alone_;
  Output output_;
  text::Table table_;
  bool blank_ = false;  // whether a line has to part this report from the one before
};

// "pmi_report: MESSAGE" on standard error, on one line whatever it holds.
void Say(const std::string& message);

#pragma once

#include "CommandLine.h"
#include "Output.h"
#include "model/Drawing.h"
#include "plugin/PluginLibrary.h"
#include "writers/text/Table.h"

// Exit codes. Of several models' codes the first in this order counts.
enum ExitCode {
  kExitNotWritten = 1,
  kExitBadPlugin = 3,
  kExitBadModel = 2,
  kExitFindings = 5,
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
  // A report, with what to say of losses; or only the reason why the model was refused.
  struct Answer {
    std::optional<ModelReport> report;
    Drawing drawing;  // empty unless a page is written
    ExitCode code = kExitGood;
    std::string message;  // empty when there is nothing to say
  };
  Answer Ask(const std::string& model) const;
  void Write(const ModelReport& report, const Drawing& drawing);
  // Lists what is not in the document on standard error.
  ExitCode WriteQif(const ModelReport& report);
  void WriteRefused(const std::string& file, const std::string& message);
  void WriteJson(const std::string& json);

  const Options& options_;
  const PluginLibrary plugin_;
  const bool alone_;
  Output output_;
  text::Table table_;
  bool blank_ = false;  // whether the next report needs an empty line before it
};

// Writes "pmi_report: MESSAGE" to standard error, as one line.
void Say(const std::string& message);

#include "Session.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <new>

#include "MakeReport.h"
#include "model/File.h"
#include "readers/qif/QifReader.h"
#include "readers/step/StepReader.h"
#include "writers/json/PrintJson.h"
#include "writers/text/Clean.h"

namespace {

constexpr const char* kStandardInput = "standard input";

ExitCode Worse(ExitCode a, ExitCode b) {
  for (const ExitCode code : {kExitNotWritten, kExitBadPlugin, kExitBadModel, kExitLost}) {
    if (a == code || b == code) return code;
  }
  return kExitGood;
}

// Shows how far a run of several models has come, on a terminal alone.
class Progress {
 public:
  explicit Progress(std::size_t models) : models_(models) {
    const char* terminal = std::getenv("TERM");
    shown_ = models > 1 && isatty(2) != 0 && terminal != nullptr && terminal != std::string("dumb");
  }
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  void Show(std::size_t done, const std::string& model) {
    if (!shown_) return;
    Clear();
    std::cerr << '[' << done + 1 << '/' << models_ << "] " << text::OneLine(model) << std::flush;
  }
  void Clear() {
    if (shown_) std::cerr << "\r\x1b[K" << std::flush;
  }

 private:
  std::size_t models_;
  bool shown_;
};

std::string ReadStandardInput() {
  std::string text;
  char part[65536];
  for (ssize_t count = 0; (count = read(0, part, sizeof part)) != 0;) {
    if (count < 0 && errno != EINTR) {
      throw ModelError(std::string(kStandardInput) + ": " + std::strerror(errno));
    }
    if (count > 0) text.append(part, static_cast<std::size_t>(count));
  }
  return text;
}

std::string FileName(const std::string& model) { return model == "-" ? kStandardInput : model; }

// A model of the format that the file's first bytes tell. Throws ModelError.
Model ReadModel(const std::string& path) {
  const std::string text = path == "-" ? ReadStandardInput() : ReadFile(path);
  return IsStep(text) ? ReadStepText(text, FileName(path)) : ReadQifText(text, FileName(path));
}

// The report of one model. Throws ModelError or PluginError.
ModelReport ReportOn(const PluginLibrary& plugin, const std::string& model) {
  const Model source = ReadModel(model);
  const auto exporter = plugin.CreateExporter(source.part->GetDocument());
  return MakeReport(source, *exporter, FileName(model));
}

std::string NoCapture(const std::vector<std::string>& missing, const ModelReport& report) {
  std::string message = report.source.file + ": no capture";
  for (const std::string& name : missing) message += " \"" + name + "\"";
  std::string names;
  for (const CaptureReport& capture : report.captures) {
    names += (names.empty() ? "" : ", ") + ("\"" + capture.name.value_or("") + "\"");
    if (capture.id) names += " (id " + *capture.id + ")";
  }
  return message + (names.empty() ? "; the model has none" : "; the model has " + names);
}

}  // namespace

void Say(const std::string& message) {
  std::cerr << "pmi_report: " << text::OneLine(message) << '\n';
}

Session::Session(const Options& options)
    : options_(options),
      plugin_(options.plugin),
      alone_(options.models.size() == 1),
      output_(options.output) {}

ExitCode Session::Run() {
  Progress progress(options_.models.size());
  ExitCode worst = kExitGood;
  for (std::size_t i = 0; i < options_.models.size(); ++i) {
    progress.Show(i, options_.models[i]);
    const Answer answer = Ask(options_.models[i]);
    progress.Clear();
    if (answer.report) {
      worst = Worse(worst, Write(*answer.report));
    } else {
      Say(answer.message);
      WriteRefused(FileName(options_.models[i]), answer.message);
      worst = Worse(worst, answer.code);
    }
  }
  if (options_.summary && !alone_) output_.Write(table_.Print());
  output_.Finish();
  return worst;
}

Session::Answer Session::Ask(const std::string& model) const {
  try {
    ModelReport report = ReportOn(plugin_, model);
    const std::vector<std::string> missing = Select(options_.selection, report);
    if (!missing.empty()) return {{}, kExitBadModel, NoCapture(missing, report)};
    return {std::move(report), kExitGood, ""};
  } catch (const ModelError& error) {
    return {{}, kExitBadModel, error.what()};
  } catch (const std::bad_alloc&) {
    return {{}, kExitBadModel, FileName(model) + ": not enough memory"};
  } catch (const std::exception& error) {
    return {{}, kExitBadPlugin, FileName(model) + ": " + error.what()};
  }
}

ExitCode Session::Write(const ModelReport& report) {
  if (options_.json) {
    PrintJson(report, kProgram, alone_ ? 2 : -1,
              [this](const std::string& piece) { WriteJson(piece); });
    output_.Write("\n");
  } else if (!options_.summary) {
    text::Style style = options_.style;
    style.colour = output_.ShowsColour();
    output_.Write((blank_ ? "\n" : "") + text::PrintText(report, style));
    blank_ = true;
  } else if (alone_) {
    output_.Write(text::PrintSummary(report));
  } else {
    table_.Add(report);
  }
  const std::string loss = text::LossLine(report, options_.strict);
  if (loss.empty()) return kExitGood;
  Say(report.source.file + ": " + loss);
  return kExitLost;
}

void Session::WriteRefused(const std::string& file, const std::string& message) {
  if (alone_) return;
  if (options_.json) WriteJson(PrintJsonError(file, message, kProgram, -1) + "\n");
  if (options_.summary) table_.AddRefused(file);
}

void Session::WriteJson(const std::string& json) {
  output_.Write(output_.IsTerminal() ? text::EscapeControls(json) : json);
}

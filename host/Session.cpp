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
#include "report/Clean.h"
#include "writers/html/PrintPage.h"
#include "writers/json/PrintJson.h"
#include "writers/qif/PrintQif.h"

namespace {

constexpr const char* kStandardInput = "standard input";

ExitCode Worse(ExitCode a, ExitCode b) {
  for (const ExitCode code :
       {kExitNotWritten, kExitBadPlugin, kExitBadModel, kExitFindings, kExitLost}) {
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

// A model of the format that the file's first bytes tell, and its drawing when that is not null.
// Throws ModelError.
Model ReadModel(const std::string& path, Drawing* drawing) {
  const std::string text = path == "-" ? ReadStandardInput() : ReadFile(path);
  return IsStep(text) ? ReadStepText(text, FileName(path), drawing)
                      : ReadQifText(text, FileName(path), drawing);
}

// The report of one model, and its drawing when that is not null. Throws ModelError or PluginError.
ModelReport ReportOn(const PluginLibrary& plugin, const std::string& model, Drawing* drawing) {
  const Model source = ReadModel(model, drawing);
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
      output_(options.html.empty() ? options.output : options.html),
      table_(options.check) {}

ExitCode Session::Run() {
  Progress progress(options_.models.size());
  ExitCode worst = kExitGood;
  for (std::size_t i = 0; i < options_.models.size(); ++i) {
    progress.Show(i, options_.models[i]);
    const Answer answer = Ask(options_.models[i]);
    progress.Clear();
    if (answer.report && options_.qif) worst = Worse(worst, WriteQif(*answer.report));
    if (answer.report && !options_.qif) Write(*answer.report, answer.drawing);
    if (!answer.message.empty()) Say(answer.message);
    if (!answer.report) WriteRefused(FileName(options_.models[i]), answer.message);
    worst = Worse(worst, answer.code);
  }
  if (options_.summary && !alone_) output_.Write(table_.Print());
  output_.Finish();
  return worst;
}

Session::Answer Session::Ask(const std::string& model) const {
  try {
    Drawing drawing;
    ModelReport report = ReportOn(plugin_, model, options_.html.empty() ? nullptr : &drawing);
    if (options_.check) report.checks = checks::Check(report, options_.rules);
    const std::string errors = text::ErrorLine(report);
    const std::string loss = text::LossLine(report, options_.strict);
    const std::vector<std::string> missing = Select(options_.selection, report);
    if (!missing.empty()) return {{}, {}, kExitBadModel, NoCapture(missing, report)};
    ExitCode code = errors.empty() ? kExitLost : kExitFindings;
    std::string message = errors.empty() || loss.empty() ? errors + loss : errors + "; " + loss;
    if (message.empty()) {
      code = kExitGood;
    } else {
      message = FileName(model) + ": " + message;
    }
    return {std::move(report), std::move(drawing), code, message};
  } catch (const ModelError& error) {
    return {{}, {}, kExitBadModel, error.what()};
  } catch (const std::bad_alloc&) {
    return {{}, {}, kExitBadModel, FileName(model) + ": not enough memory"};
  } catch (const std::exception& error) {
    return {{}, {}, kExitBadPlugin, FileName(model) + ": " + error.what()};
  }
}

void Session::Write(const ModelReport& report, const Drawing& drawing) {
  if (!options_.html.empty()) {
    const auto printReport = [&report](const html::Sink& sink) {
      json::PrintJson(report, kProgram, -1, sink);
    };
    html::PrintPage(report, drawing, printReport,
                    [this](const std::string& piece) { output_.Write(piece); });
  } else if (options_.json) {
    json::PrintJson(report, kProgram, alone_ ? 2 : -1,
                    [this](const std::string& piece) { WriteJson(piece); });
    output_.Write("\n");
  } else if (!options_.summary) {
    text::Style style = options_.style;
    style.colour = output_.ShowsColour();
    style.selection = options_.selection;
    output_.Write((blank_ ? "\n" : "") + text::PrintText(report, style));
    blank_ = true;
  } else if (alone_) {
    output_.Write(text::PrintSummary(report));
  } else {
    table_.Add(report);
  }
}

ExitCode Session::WriteQif(const ModelReport& report) {
  const qif_writer::QifDocument document = qif_writer::PrintQif(report, kProgram);
  output_.Write(document.text);
  bool hasLost = false;
  for (const SkippedReport& omission : document.omitted) {
    Say(report.source.file + ": not in QIF: " + qif_writer::LineFor(omission));
    hasLost = hasLost || omission.severity == "lost" ||
              (options_.strict && omission.severity == "reduced");
  }
  return hasLost ? kExitLost : kExitGood;
}

void Session::WriteRefused(const std::string& file, const std::string& message) {
  if (alone_) return;
  if (options_.json) WriteJson(json::PrintJsonError(file, message, kProgram, -1) + "\n");
  if (options_.summary) table_.AddRefused(file);
}

void Session::WriteJson(const std::string& json) {
  output_.Write(output_.IsTerminal() ? text::EscapeControls(json) : json);
}

// pmi_report: the product manufacturing information of QIF models, as a plug-in answers it.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <clocale>
#include <cstdio>
#include <filesystem>
#include <iostream>

#include "plugin/PluginLibrary.h"
#include "readers/qif/QifReader.h"
#include "readers/step/StepReader.h"
#include <fstream>
#include <sstream>
#include "report/Walk.h"
#include "writers/json/PrintJson.h"
#include "writers/text/PrintText.h"

namespace fs = std::filesystem;

namespace {

constexpr int kBadModel = 2;
constexpr int kBadPlugin = 3;

struct Options {
  std::vector<std::string> models;
  std::string plugin;
  bool json = false;
};

// What comes with the program, by its path from the program's folder.
std::string Beside(const char* path) {
  return (fs::read_symlink("/proc/self/exe").parent_path() / path).lexically_normal().string();
}

// Shows how far a run of several models has come, on a terminal alone.
class Progress {
 public:
  explicit Progress(std::size_t models) : models_(models), shown_(models > 1 && isatty(2) != 0) {}
  ~Progress() { Clear(); }
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  void Show(std::size_t done, const std::string& model) {
    Clear();
    if (shown_) std::cerr << '[' << done + 1 << '/' << models_ << "] " << model << std::flush;
  }
  void Clear() {
    if (shown_) std::cerr << "\r\x1b[K" << std::flush;
  }

 private:
  std::size_t models_;
  bool shown_;
};

const char* NameOf(Severity severity) {
  switch (severity) {
    case Severity::kLost:
      return "lost";
    case Severity::kReduced:
      return "reduced";
    case Severity::kIgnored:
      break;
  }
  return "ignored";
}

// The report of one model. Throws ModelError or PluginError.
ModelReport ReportOn(const PluginLibrary& plugin, const std::string& model) {
  std::ifstream stream(model); std::stringstream all; all << stream.rdbuf(); const std::string text = all.str();
  const Model source = text.substr(0, 12) == "ISO-10303-21" ? ReadStepText(text, model) : ReadQif(model);
  const auto exporter = plugin.CreateExporter(source.part->GetDocument());
  exporter->PreProcess();
  std::unordered_map<const void*, EntityReport> names;
  for (const auto& [entity, label] : source.labels) names[entity] = {label.kind, {}, label.label};
  ModelReport report = WalkModel(*exporter, [&](const void* entity) -> const EntityReport* {
    const auto found = names.find(entity);
    return found == names.end() ? nullptr : &found->second;
  });
  report.source.file = model;
  report.source.format = source.format;
  report.source.linearUnit = source.linearUnit;
  report.source.pmiLinearUnit = source.pmiLinearUnit;
  report.source.pmiAngularUnit = source.pmiAngularUnit;
  report.source.counts = source.counts;
  for (const SkippedItem& item : source.skipped) {
    report.source.skipped.push_back({NameOf(item.severity), item.kind, item.id, item.annotation,
                                     item.reason, item.line, item.count});
  }
  return report;
}

void Write(const ModelReport& report, const Options& options) {
  const bool alone = options.models.size() == 1;
  const std::string text =
      options.json ? PrintJson(report, alone ? 2 : -1) + "\n" : PrintText(report);
  if (!std::cout.write(text.data(), static_cast<std::streamsize>(text.size())).flush()) {
    throw std::runtime_error("cannot write the report");
  }
}

int Run(const Options& options) {
  const PluginLibrary plugin(options.plugin);
  Progress progress(options.models.size());
  int status = 0;
  for (std::size_t i = 0; i < options.models.size(); ++i) {
    progress.Show(i, options.models[i]);
    try {
      const ModelReport report = ReportOn(plugin, options.models[i]);
      progress.Clear();
      Write(report, options);
    } catch (const ModelError& error) {
      progress.Clear();
      std::cerr << "pmi_report: " << error.what() << '\n';
      status = kBadModel;
    } catch (const PluginError& error) {
      progress.Clear();
      std::cerr << "pmi_report: " << options.models[i] << ": " << error.what() << '\n';
      status = kBadPlugin;
    }
  }
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "C.UTF-8");
  Options options;
  CLI::App app("Reports the product manufacturing information of QIF 3.0 models", "pmi_report");
  app.add_option("MODEL", options.models, "QIF documents (default: the bundled model)");
  app.add_option("--plugin", options.plugin,
                 "The plug-in to load (default: the one that comes with the program)");
  app.add_flag("--json", options.json,
               "Print JSON: one document, or one a line when several models are named");
  app.set_version_flag("--version", "pmi_report " VERSION);
  CLI11_PARSE(app, argc, argv);
  try {
    if (options.models.empty()) {
      options.models.push_back(Beside(BUNDLED_MODEL));
    }
    if (options.plugin.empty()) {
      options.plugin = Beside(PLUGIN);
    }
    return Run(options);
  } catch (const PluginError& error) {
    std::cerr << "pmi_report: " << error.what() << '\n';
    return kBadPlugin;
  } catch (const std::exception& error) {
    std::cerr << "pmi_report: " << error.what() << '\n';
    return 1;
  }
}

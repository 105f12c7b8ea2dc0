#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <map>

namespace {

constexpr const char* kExitCodes =
    "Exit codes: 0 all reported; 4 reported, but PMI was lost; 2 a model was refused; 3 the "
    "plug-in\n"
    "failed; 1 the output could not be written; 100 and above invalid arguments. Of several the\n"
    "first of 1, 3, 2, 4 counts.";

const std::map<std::string, text::By>& Groupings() {
  static const std::map<std::string, text::By> groupings{{"kind", text::By::kKind},
                                                         {"view", text::By::kView},
                                                         {"face", text::By::kFace},
                                                         {"capture", text::By::kCapture}};
  return groupings;
}

// Standard input can be read once.
void CheckFiles(const std::vector<std::string>& models, const std::string& output) {
  if (std::count(models.begin(), models.end(), "-") > 1) {
    throw CLI::ValidationError("MODEL", "standard input, -, can be named once");
  }
  for (const std::string& model : models) {
    std::error_code missing;
    if (std::filesystem::is_regular_file(output, missing) &&
        std::filesystem::equivalent(model, output, missing)) {
      throw CLI::ValidationError("--output", output + " is one of the models");
    }
  }
}

}  // namespace

std::optional<Options> ParseCommandLine(int argc, char** argv, int& exitCode) {
  Options options;
  CLI::App app("Reports the product manufacturing information of CAD models (QIF 3.0, STEP AP242)",
               "pmi_report");
  app.footer(kExitCodes);
  app.set_version_flag("--version", kProgram);
  app.add_option("MODEL", options.models,
                 "Documents; - is standard input (default: the bundled model)");
  CLI::Option* json =
      app.add_flag("--json", options.json,
                   "Print JSON: one document, or one a line when several models are named");
  std::string by = "kind";
  app.add_option("--by", by, "Group annotations by kind, view, face or capture (default: kind)")
      ->check(CLI::IsMember({"kind", "view", "face", "capture"}))
      ->excludes(json);
  app.add_option("--kind", options.selection.kinds,
                 "Report these kinds alone, a list with commas; may be repeated")
      ->check(CLI::IsMember(text::KindNames()))
      ->delimiter(',')
      ->allow_extra_args(false);
  app.add_option("--capture", options.selection.captures,
                 "Report what this capture shows alone, by its name or id; may be repeated")
      ->allow_extra_args(false);
  app.add_flag("--summary", options.summary,
               "Print a line on the model alone, or a table when several are named")
      ->excludes(json);
  app.add_flag("--verbose", options.style.verbose,
               "Print everything: positions, fonts, leaders, limits, whole lists (JSON has all)");
  app.add_option("--output", options.output,
                 "Write to this file, whole or not at all (default: standard output)")
      ->type_name("FILE");
  app.add_flag("--strict", options.strict, "Exit with 4 also when PMI was reduced");
  app.add_option("--plugin", options.plugin,
                 "The plug-in to load (default: the one that comes with the program)");
  try {
    app.parse(argc, argv);
    CheckFiles(options.models, options.output);
  } catch (const CLI::ParseError& error) {
    exitCode = app.exit(error);
    return {};
  }
  options.style.by = Groupings().at(by);
  // The groups are captures, whatever kinds are in them.
  if (options.style.by == text::By::kCapture && !options.selection.kinds.empty()) {
    options.selection.kinds.emplace_back("captures");
  }
  return options;
}

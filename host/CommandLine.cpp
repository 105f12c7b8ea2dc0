#include "CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>

namespace {

constexpr const char* kExitCodes =
    "Exit codes: 0 reported, nothing lost; 4 reported, but PMI was lost; 5 a check found an "
    "error;\n"
    "2 a model was refused; 3 the plug-in failed; 1 the output could not be written; 100 and "
    "above\n"
    "invalid arguments. Of several the first of 1, 3, 2, 5, 4 counts.";

const std::map<std::string, text::By>& Groupings() {
  static const std::map<std::string, text::By> groupings{{"kind", text::By::kKind},
                                                         {"view", text::By::kView},
                                                         {"face", text::By::kFace},
                                                         {"capture", text::By::kCapture}};
  return groupings;
}

// Adds an option that takes items of a list, parted by commas and spaces.
CLI::Option* AddList(CLI::App& app, const char* name, std::vector<std::string>& items,
                     const std::vector<std::string>& known, const char* description) {
  const CLI::IsMember isKnown(known);
  const auto add = [&items, isKnown, name](const std::vector<std::string>& lists) {
    for (const std::string& list : lists) {
      for (std::string item : CLI::detail::split(list, ',')) {
        CLI::detail::trim(item);
        // A validator answers with its error.
        const std::string error = item.empty() ? "an item of the list is empty" : isKnown(item);
        if (!error.empty()) throw CLI::ValidationError(name, error);
        items.push_back(item);
      }
    }
  };
  return app.add_option_function<std::vector<std::string>>(name, add, description)
      ->type_name("LIST:" + isKnown.get_description())
      ->allow_extra_args(false);
}

// What is checked. --rules prints and ends.
void AddChecks(CLI::App& app, Options& options) {
  CLI::Option* check = app.add_flag("--check", options.check,
                                    "Apply rules to the PMI; exit with 5 when one finds an error");
  const std::vector<std::string> ids = checks::RuleIds();
  AddList(app, "--only", options.rules.only, ids, "Apply these rules alone, a list with commas")
      ->needs(check);
  AddList(app, "--ignore", options.rules.ignore, ids, "Leave these rules out, a list with commas")
      ->needs(check);
  app.add_option("--severity", options.rules.severity,
                 "Apply rules of this severity and above: note, warning or error (default: note)")
      ->check(CLI::IsMember(checks::Severities()))
      ->needs(check);
  app.add_flag_callback(
      "--rules",
      [] {
        std::cout << checks::DescribeRules();
        throw CLI::Success();
      },
      "Print the rules and exit");
}

// Standard input can be read once.
void CheckFiles(const std::vector<std::string>& models, const char* option,
                const std::string& output) {
  if (std::count(models.begin(), models.end(), "-") > 1) {
    throw CLI::ValidationError("MODEL", "standard input, -, can be named once");
  }
  for (const std::string& model : models) {
    std::error_code missing;
    if (std::filesystem::is_regular_file(output, missing) &&
        std::filesystem::equivalent(model, output, missing)) {
      throw CLI::ValidationError(option, output + " is one of the models");
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
  const auto named = [](const std::string& file) {
    return std::string(file.empty() ? "the name of a file is empty" : "");
  };
  app.add_option("MODEL", options.models,
                 "Documents; - is standard input (default: the bundled model)")
      ->check(named);
  CLI::Option* json =
      app.add_flag("--json", options.json,
                   "Print JSON: one document, or one a line when several models are named");
  CLI::Option* summary =
      app.add_flag("--summary", options.summary,
                   "Print a line on the model alone, or a table when several are named")
          ->excludes(json);
  CLI::Option* html =
      app.add_option("--html", options.html,
                     "Write a page for a browser to this file instead of a report, whole or not at "
                     "all; - is standard output")
          ->type_name("FILE")
          ->check(named)
          ->excludes(json)
          ->excludes(summary);
  std::string by = "kind";
  app.add_option("--by", by, "Group annotations by kind, view, face or capture (default: kind)")
      ->check(CLI::IsMember({"kind", "view", "face", "capture"}))
      ->excludes(json)
      ->excludes(html)
      ->excludes(summary);
  AddList(app, "--kind", options.selection.kinds, text::KindNames(),
          "Report these kinds alone, a list with commas; may be repeated");
  app.add_option("--capture", options.selection.captures,
                 "Report what this capture shows alone, by its name or id; may be repeated")
      ->allow_extra_args(false);
  app.add_flag("--verbose", options.style.verbose,
               "Print everything: positions, fonts, leaders, limits, whole lists (JSON has all)")
      ->excludes(html)
      ->excludes(summary);
  std::string qif;
  CLI::Option* output =
      app.add_option("--output", options.output,
                     "Write to this file, whole or not at all (default: standard output)")
          ->type_name("FILE")
          ->excludes(html)
          ->check(named);
  app.add_option("--qif", qif,
                 "Write the model's annotations to this file as QIF 3.0, whole or not at all")
      ->type_name("FILE")
      ->excludes(html)
      ->check(named)
      ->excludes(json)
      ->excludes(summary)
      ->excludes(output);
  app.add_flag("--strict", options.strict, "Exit with 4 also when PMI was reduced");
  app.add_option("--plugin", options.plugin,
                 "The plug-in to load (default: the one that comes with the program)")
      ->check(named);
  AddChecks(app, options);
  try {
    app.parse(argc, argv);
    options.qif = !qif.empty();
    if (options.qif && options.models.size() > 1) {
      throw CLI::ValidationError("--qif", "one model at a time can be written as QIF");
    }
    CheckFiles(options.models, "--qif", qif);
    if (options.qif) options.output = qif;
    CheckFiles(options.models, "--output", options.output);
    CheckFiles(options.models, "--html", options.html);
    if (!options.html.empty() && options.models.size() > 1) {
      throw CLI::ValidationError("--html", "a page shows one model; name one");
    }
  } catch (const CLI::ParseError& error) {
    exitCode = app.exit(error);
    return {};
  }
  options.style.by = Groupings().at(by);
  // The groups are captures: those are needed for any kind of annotation.
  if (options.style.by == text::By::kCapture && !options.selection.kinds.empty()) {
    options.selection.kinds.emplace_back("captures");
  }
  return options;
}

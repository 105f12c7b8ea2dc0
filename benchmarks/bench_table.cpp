// Prints the table of ratios from what the programs wrote: bench_table [--json] FILE...
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace {

using nlohmann::ordered_json;

// Stands for what could not be measured.
constexpr double kFailed = 1e9;

struct Row {
  const char* key;
  const char* what;
  const char* against;
  double goal;
  const char* figure = "ratio";
};

const Row rows[] = {
    {"sparse", "index of a sparse model (1,000,000 entities)", "the kernel calls, storing nothing",
     1.25},
    {"dense", "index of a dense model, per annotation", "map entry, its plane, two lists, plainly",
     1.6},
    {"growth_planes", "building, annotations doubled, with planes", "half the size", 2.2},
    {"growth_null", "building, annotations doubled, null view", "half the size", 2.2},
    {"walk", "walking everything, annotations doubled", "half the size", 2.2},
    {"numbers", "a query that returns numbers", "virtual call, kind test, getter", 1.5},
    {"string", "a query that returns a string", "the same with the one string copy", 1.3},
    {"placement", "a placement query at 10,000 views", "the same at 100 views", 2},
    {"map", "identifier hash map, add and look up", "std::unordered_map, the same hash", 1},
    {"destroy", "destroying the exporter", "freeing plain records of the same shape", 1.3},
    {"memory_planes", "bytes per annotation, with plane", "-", 900, "bytes"},
    {"memory_null", "bytes per annotation, null view", "-", 400, "bytes"},
    {"qif", "reading a QIF document and reporting", "libxml2 parsing it, nothing else", 2},
    {"qif_write", "reading a QIF document and writing it as QIF", "reading it", 2},
    {"step", "reading a STEP file and reporting", "splitting it into instances, nothing else", 3},
    {"step_growth", "pmi_report, STEP instances doubled: time", "half the size", 2.2},
    {"step_growth", "pmi_report, STEP instances doubled: memory", "half the size", 2.2,
     "memory_ratio"},
    {"step_memory", "memory for each byte of a STEP file", "-", 10, "bytes"},
    {"pmi_report", "pmi_report, annotations doubled: time", "half the size", 2.2},
    {"pmi_report", "pmi_report, annotations doubled: memory", "half the size", 2.2, "memory_ratio"},
    {"check", "checking the PMI, what it adds", "reporting on it", 1},
};

// The medians of all cases by row, in the order of their measurement.
std::map<std::string, ordered_json> CasesOf(const std::vector<std::string>& files) {
  std::map<std::string, ordered_json> cases;
  for (const std::string& file : files) {
    std::ifstream stream(file);
    const ordered_json document = ordered_json::parse(stream);
    for (const ordered_json& run : document.at("benchmarks")) {
      // A benchmark that ran once has no median but itself.
      if (run.value("aggregate_name", "median") != "median") continue;
      std::string name = run.at("run_name");
      name.erase(std::min(name.find('/'), name.size()));
      const auto colon = name.find(':');
      ordered_json one = {{"case", name.substr(colon + 1)}};
      for (const char* key :
           {"ratio", "memory_ratio", "bytes", "ours_ns", "plain_ns", "error_message"}) {
        if (run.contains(key)) one[key] = run[key];
      }
      cases[name.substr(0, colon)].push_back(one);
    }
  }
  return cases;
}

// A row as measured: its worst case stands for it, and a case that failed is worse than all.
ordered_json Measured(const Row& row, const ordered_json& cases) {
  const auto figure = [&](const ordered_json& one) { return one.value(row.figure, kFailed); };
  const ordered_json worst =
      *std::max_element(cases.begin(), cases.end(),
                        [&](const auto& a, const auto& b) { return figure(a) < figure(b); });
  return {{"row", row.key},         {"what", row.what},
          {"against", row.against}, {"goal", row.goal},
          {"unit", row.figure},     {"measured", figure(worst)},
          {"worst", worst["case"]}, {"ok", figure(worst) <= row.goal},
          {"cases", cases}};
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> files(argv + 1, argv + argc);
  const bool json = !files.empty() && files.front() == "--json";
  if (json) files.erase(files.begin());
  auto cases = CasesOf(files);
  ordered_json table = ordered_json::array();
  for (const Row& row : rows) {
    if (!cases[row.key].empty()) table.push_back(Measured(row, cases[row.key]));
  }
  if (json) {
    std::printf("%s\n", table.dump(2).c_str());
    return 0;
  }
  const auto line = [](const char* what, const char* against, const char* measured,
                       const char* goal, const char* verdict, const char* worst) {
    std::printf("%-46s %-40s %8s %8s %-5s %s\n", what, against, measured, goal, verdict, worst);
  };
  line("what", "against", "measured", "goal", "", "worst case");
  for (const ordered_json& row : table) {
    const double figure = row["measured"];
    char measured[32], goal[32];
    std::snprintf(measured, sizeof measured, figure >= 100 ? "%.0f" : "%.2f", figure);
    if (figure >= kFailed) std::strcpy(measured, "failed");
    std::snprintf(goal, sizeof goal, "<= %g", row["goal"].get<double>());
    line(row["what"].get<std::string>().c_str(), row["against"].get<std::string>().c_str(),
         measured, goal, row["ok"] ? "ok" : "MISS", row["worst"].get<std::string>().c_str());
  }
  return 0;
}

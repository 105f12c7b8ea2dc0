// Reading documents and reporting on them, whole processes.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "Measure.h"

namespace fs = std::filesystem;

namespace {

// Time by the clock on the wall and the most memory that a process had. This program has to stay
// smaller than those that it measures: what it has itself counts for them too.
struct Used {
  double seconds;
  double kilobytes;
};

Used Run(std::vector<std::string> command) {
  std::vector<char*> arguments;
  for (std::string& argument : command) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t silent;
  posix_spawn_file_actions_init(&silent);
  posix_spawn_file_actions_addopen(&silent, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&silent, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  const auto start = std::chrono::steady_clock::now();
  pid_t child = 0;
  int status = -1;
  rusage used{};
  if (posix_spawn(&child, arguments[0], &silent, nullptr, arguments.data(), environ) == 0) {
    wait4(child, &status, 0, &used);
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  posix_spawn_file_actions_destroy(&silent);
  // 4: reported, but PMI was lost.
  const bool done = WIFEXITED(status) && (WEXITSTATUS(status) == 0 || WEXITSTATUS(status) == 4);
  if (!done) throw std::runtime_error(command[0] + " failed");
  return {taken.count(), static_cast<double>(used.ru_maxrss)};
}

// --- One document: reporting beside parsing ------------------------------------------------------

// The largest of the models beside the project, or the bundled one.
fs::path Model() {
  fs::path largest = BUNDLED_MODEL;
  std::error_code none;
  for (const auto& entry : fs::directory_iterator(MODELS, none)) {
    if (entry.path().extension() == ".qif" && entry.file_size() > fs::file_size(largest)) {
      largest = entry.path();
    }
  }
  return largest;
}

void Report(benchmark::State& state, const std::string& model, bool json) {
  std::vector<std::string> report = {PMI_REPORT, model};
  if (json) report.push_back("--json");
  try {
    measure::Compare(
        state, 1, [&] { return Run(report).seconds; },
        [&] {
          return Run({QIF_PARSE, model}).seconds;
        });
  } catch (const std::runtime_error& error) {
    state.SkipWithError(error.what());
  }
}

// --- Documents of twice the size -----------------------------------------------------------------

// Writes notes and flatness tolerances in planes of their own, by turns, ten to each face. What is
// the i-th of a kind has the i-th of this kind's ids.
class DocumentWriter {
 public:
  DocumentWriter(const fs::path& path, int annotations) : out_(path), annotations_(annotations) {}

  void Write() {
    const int faces = (annotations_ + 9) / 10;
    out_ << R"(<QIFDocument xmlns="http://qifstandards.org/xsd/qif3" versionQIF="3.0.0">)"
         << "<FileUnits><PrimaryUnits><LinearUnit><SIUnitName>meter</SIUnitName>"
            "<UnitName>mm</UnitName><UnitConversion><Factor>0.001</Factor></UnitConversion>"
            "</LinearUnit></PrimaryUnits></FileUnits>\n<Product>\n<TopologySet><FaceSet>\n";
    for (int i = 0; i < faces; ++i) out_ << "<Face id='" << kFaces + i << "'/>\n";
    out_ << "</FaceSet><BodySet><Body id='1'><FaceIds>\n";
    for (int i = 0; i < faces; ++i) out_ << "<Id>" << kFaces + i << "</Id>\n";
    out_ << "</FaceIds></Body></BodySet></TopologySet>\n<NoteSet>\n";
    for (int i = 0; i < annotations_; i += 2) {
      out_ << "<Note id='" << kAnnotations + i << "' label='note " << i << "'>" << OnFace(i)
           << "<Text>BREAK ALL EDGES</Text></Note>\n";
    }
    out_ << "</NoteSet>\n<ViewSet><AnnotationViewSet><AnnotationView id='2'><Normal>0 0 1</Normal>"
            "<Direction>1 0 0</Direction></AnnotationView></AnnotationViewSet></ViewSet>\n"
            "<VisualizationSet><PMIDisplaySet>\n";
    for (int i = 0; i < annotations_; ++i) {
      out_ << "<PMIDisplay><Plane><AnnotationViewId><Id>2</Id></AnnotationViewId><Origin>0 0 " << i
           << "</Origin></Plane><Reference><Id>" << kAnnotations + i << "</Id></Reference>"
           << "</PMIDisplay>\n";
    }
    out_ << "</PMIDisplaySet></VisualizationSet>\n</Product>\n<Characteristics>\n"
            "<CharacteristicDefinitions>\n";
    for (int i = 1; i < annotations_; i += 2) {
      out_ << "<FlatnessCharacteristicDefinition id='" << kDefinitions + i
           << "'><ToleranceValue>0.1</ToleranceValue></FlatnessCharacteristicDefinition>\n";
    }
    out_ << "</CharacteristicDefinitions>\n<CharacteristicNominals>\n";
    for (int i = 1; i < annotations_; i += 2) {
      out_ << "<FlatnessCharacteristicNominal id='" << kAnnotations + i
           << "'><CharacteristicDefinitionId>" << kDefinitions + i
           << "</CharacteristicDefinitionId>" << OnFace(i) << "<Name>flatness " << i
           << "</Name></FlatnessCharacteristicNominal>\n";
    }
    out_ << "</CharacteristicNominals>\n</Characteristics>\n</QIFDocument>\n";
    out_.close();
    if (!out_) throw std::runtime_error("a document could not be written");
  }

 private:
  static constexpr int kFaces = 1000000;
  static constexpr int kAnnotations = 2000000;
  static constexpr int kDefinitions = 3000000;

  static std::string OnFace(int i) {
    return "<EntityInternalIds><Id>" + std::to_string(kFaces + i / 10) +
           "</Id></EntityInternalIds>";
  }

  std::ofstream out_;
  int annotations_;
};

// A new folder that goes with the program.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string path = fs::temp_directory_path() / "pmi-bench-XXXXXX";
    if (mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary folder");
    path_ = path;
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code none;
    fs::remove_all(path_, none);
  }
  const fs::path& Path() const { return path_; }

 private:
  fs::path path_;
};

// The document of that many annotations, written when it is first asked for.
std::string Document(const fs::path& folder, int annotations) {
  const fs::path path = folder / (std::to_string(annotations) + ".qif");
  if (!fs::exists(path)) DocumentWriter(path, annotations).Write();
  return path;
}

void Growth(benchmark::State& state, const fs::path& folder, int annotations) {
  try {
    const std::string document = Document(folder, annotations);
    const std::string halfDocument = Document(folder, annotations / 2);
    for (auto _ : state) {
      const Used half = Run({PMI_REPORT, halfDocument});
      const Used whole = Run({PMI_REPORT, document});
      measure::Report(state, whole.seconds, half.seconds, annotations, annotations / 2.0);
      state.counters["memory_ratio"] = whole.kilobytes / half.kilobytes;
      state.counters["bytes"] = 1024 * whole.kilobytes / annotations;
    }
  } catch (const std::runtime_error& error) {
    state.SkipWithError(error.what());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const TemporaryFolder folder;
  const fs::path model = Model();
  for (const bool json : {false, true}) {
    measure::Register("qif:" + model.filename().string() + (json ? " as JSON" : " as text"), 15,
                      [=](auto& state) { Report(state, model.string(), json); });
  }
  for (int n = 8000; n <= 64000; n *= 2) {
    measure::Register("pmi_report:" + std::to_string(n), 5,
                      [=, &folder](auto& state) { Growth(state, folder.Path(), n); });
  }
  return measure::Run(argc, argv);
}

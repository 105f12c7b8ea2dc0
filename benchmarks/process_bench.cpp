// Reading documents and reporting on them, whole processes.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

#include "Measure.h"

namespace fs = std::filesystem;

namespace {

// What a process used of a processor, in its own code and in the system's, and the most memory that
// it had. This program has to stay smaller than those that it measures: what it has itself counts
// for them too.
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
  pid_t child = 0;
  int status = -1;
  rusage used{};
  if (posix_spawn(&child, arguments[0], &silent, nullptr, arguments.data(), environ) == 0) {
    wait4(child, &status, 0, &used);
  }
  posix_spawn_file_actions_destroy(&silent);
  // 4: reported, but PMI was lost; 5: reported, and a check found an error.
  const int code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  const bool done = code == 0 || code == 4 || code == 5;
  if (!done) throw std::runtime_error(command[0] + " failed");
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
  };
  return {seconds(used.ru_utime) + seconds(used.ru_stime), static_cast<double>(used.ru_maxrss)};
}

// --- One document: reporting beside parsing or splitting
// ------------------------------------------------------

// The models beside the project in a format, or the bundled one.
std::vector<fs::path> Models(const fs::path& folder, const std::string& extension,
                             const fs::path& bundled) {
  std::vector<fs::path> models;
  std::error_code none;
  for (const auto& entry : fs::directory_iterator(folder, none)) {
    if (entry.path().extension() == extension) models.push_back(entry.path());
  }
  if (models.empty()) models.push_back(bundled);
  return models;
}

fs::path Largest(const std::vector<fs::path>& models) {
  return *std::max_element(models.begin(), models.end(), [](const fs::path& a, const fs::path& b) {
    return fs::file_size(a) < fs::file_size(b);
  });
}

// The STEP file that the goal is set for, or the largest.
fs::path StepModel(const std::vector<fs::path>& models) {
  for (const fs::path& model : models) {
    if (model.filename().string().find("ftc_08") != std::string::npos) return model;
  }
  return Largest(models);
}

void Report(benchmark::State& state, const char* plain, const std::string& model, bool json) {
  std::vector<std::string> report = {PMI_REPORT, model};
  if (json) report.push_back("--json");
  try {
    measure::Compare(
        state, 1, [&] { return Run(report).seconds; },
        [&] {
          return Run({plain, model}).seconds;
        });
  } catch (const std::runtime_error& error) {
    state.SkipWithError(error.what());
  }
}

// A document written as QIF beside the same with a line printed.
void Write(benchmark::State& state, const std::string& model) {
  try {
    measure::Compare(
        state, 1,
        [&] {
          return Run({PMI_REPORT, model, "--qif", "/dev/null"}).seconds;
        },
        [&] {
          return Run({PMI_REPORT, model, "--summary"}).seconds;
        });
  } catch (const std::runtime_error& error) {
    state.SkipWithError(error.what());
  }
}

// Memory for each byte of a file, without what an almost empty one takes.
void Memory(benchmark::State& state, const std::string& model, const std::string& empty) {
  try {
    for (auto _ : state) {
      const double more = Run({PMI_REPORT, model}).kilobytes - Run({PMI_REPORT, empty}).kilobytes;
      state.counters["bytes"] = 1024 * more / static_cast<double>(fs::file_size(model));
    }
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

// Writes a STEP file of so many instances: a hundred are a face with its edges and a flatness
// tolerance on it, which is drawn as a polyline of 74 points.
class StepWriter {
 public:
  StepWriter(const fs::path& path, int instances) : out_(path), faces_(instances / kEach) {}

  void Write() {
    out_ << "ISO-10303-21;\nHEADER;\nFILE_SCHEMA(('AP242'));\nENDSEC;\nDATA;\n"
            "#1=(LENGTH_UNIT()NAMED_UNIT(*)SI_UNIT(.MILLI.,.METRE.));\n"
            "#2=(GLOBAL_UNIT_ASSIGNED_CONTEXT((#1))REPRESENTATION_CONTEXT('',''));\n"
            "#3=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#4),#2);\n"
            "#4=MANIFOLD_SOLID_BREP('body',#5);\n#6=PRODUCT_DEFINITION_SHAPE('','',$);\n"
            "#7=LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.1),#1);\n#8=DRAUGHTING_MODEL('',(),#2);\n"
            "#9=CARTESIAN_POINT('',(0.,0.,0.));\n#10=AXIS2_PLACEMENT_3D('',#9,$,$);\n"
            "#11=PLANE('',#10);\n";
    List("#5=CLOSED_SHELL('',(", 0);
    List("#12=ANNOTATION_PLANE('',(),#11,(", kCallout);
    for (int i = 0; i < faces_; ++i) WriteFace(kFirst + kEach * i);
    out_ << "ENDSEC;\nEND-ISO-10303-21;\n";
    out_.close();
    if (!out_) throw std::runtime_error("a document could not be written");
  }

 private:
  static constexpr int kFirst = 100;
  static constexpr int kEach = 100;
  static constexpr int kCallout = 23;

  // The same instance of each face.
  void List(const char* begin, int offset) {
    out_ << begin;
    for (int i = 0; i < faces_; ++i) out_ << (i == 0 ? "#" : ",#") << kFirst + kEach * i + offset;
    out_ << "));\n";
  }

  std::ostream& Begin(int number) { return out_ << '#' << number << '='; }

  void WritePoint(int number) {
    Begin(number) << "CARTESIAN_POINT('',(" << number << ".5,0.25,-1.));\n";
  }

  void WriteFace(int n) {
    Begin(n) << "ADVANCED_FACE('',(#" << n + 1 << "),#11,.T.);\n";
    Begin(n + 1) << "FACE_OUTER_BOUND('',#" << n + 2 << ",.T.);\n";
    Begin(n + 2) << "EDGE_LOOP('',(#" << n + 3 << ",#" << n + 4 << ",#" << n + 5 << ",#" << n + 6
                 << "));\n";
    for (int k = 0; k < 4; ++k) {
      Begin(n + 3 + k) << "ORIENTED_EDGE('',*,*,#" << n + 7 + k << ",.T.);\n";
      Begin(n + 7 + k) << "EDGE_CURVE('',#" << n + 11 + k << ",#" << n + 11 + (k + 1) % 4
                       << ",$,.T.);\n";
      Begin(n + 11 + k) << "VERTEX_POINT('',#" << n + 15 + k << ");\n";
      WritePoint(n + 15 + k);
    }
    Begin(n + 19) << "SHAPE_ASPECT('','',#6,.T.);\n";
    Begin(n + 20) << "GEOMETRIC_ITEM_SPECIFIC_USAGE('','',#" << n + 19 << ",#3,#" << n << ");\n";
    Begin(n + 21) << "FLATNESS_TOLERANCE('flatness " << n << "','',#7,#" << n + 19 << ");\n";
    Begin(n + 22) << "DRAUGHTING_MODEL_ITEM_ASSOCIATION('','',#" << n + 21 << ",#8,#"
                  << n + kCallout << ");\n";
    Begin(n + kCallout) << "DRAUGHTING_CALLOUT('',(#" << n + 24 << "));\n";
    Begin(n + 24) << "ANNOTATION_CURVE_OCCURRENCE('',(),#" << n + 25 << ");\n";
    Begin(n + 25) << "POLYLINE('',(#" << n + 26;
    for (int k = 27; k < kEach; ++k) out_ << ",#" << n + k;
    out_ << "));\n";
    for (int k = 26; k < kEach; ++k) WritePoint(n + k);
  }

  std::ofstream out_;
  int faces_;
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

// The document of that size, written when it is first asked for.
template <typename Writer>
std::string Document(const fs::path& folder, const char* extension, int size) {
  const fs::path path = folder / (std::to_string(size) + extension);
  if (!fs::exists(path)) Writer(path, size).Write();
  return path;
}

template <typename Writer>
void Growth(benchmark::State& state, const fs::path& folder, const char* extension, int size) {
  try {
    const std::string document = Document<Writer>(folder, extension, size);
    const std::string halfDocument = Document<Writer>(folder, extension, size / 2);
    for (auto _ : state) {
      const Used half = Run({PMI_REPORT, halfDocument});
      const Used whole = Run({PMI_REPORT, document});
      measure::Report(state, whole.seconds, half.seconds, size, size / 2.0);
      state.counters["memory_ratio"] = whole.kilobytes / half.kilobytes;
      state.counters["bytes"] = 1024 * whole.kilobytes / size;
    }
  } catch (const std::runtime_error& error) {
    state.SkipWithError(error.what());
  }
}

// What checking adds to a report.
void Check(benchmark::State& state, const fs::path& folder, int annotations) {
  try {
    const std::string document = Document<DocumentWriter>(folder, ".qif", annotations);
    for (auto _ : state) {
      const Used plain = Run({PMI_REPORT, document});
      const Used checked = Run({PMI_REPORT, document, "--check"});
      measure::Report(state, checked.seconds - plain.seconds, plain.seconds, annotations,
                      annotations);
    }
  } catch (const std::runtime_error& error) {
    state.SkipWithError(error.what());
  }
}

}  // namespace

int main(int argc, char** argv) {
  const TemporaryFolder folder;
  const fs::path models = MODELS;
  const std::vector<fs::path> stepModels = Models(models / "step", ".stp", BUNDLED_STEP_MODEL);
  const fs::path qif = Largest(Models(models, ".qif", BUNDLED_MODEL));
  const fs::path step = StepModel(stepModels);
  for (const bool json : {false, true}) {
    const std::string how = json ? " as JSON" : " as text";
    measure::Register("qif:" + qif.filename().string() + how, 15,
                      [=](auto& state) { Report(state, QIF_PARSE, qif.string(), json); });
    measure::Register("step:" + step.filename().string() + how, 15,
                      [=](auto& state) { Report(state, STEP_SPLIT, step.string(), json); });
  }
  measure::Register("qif_write:" + qif.filename().string(), 15,
                    [=](auto& state) { Write(state, qif.string()); });
  measure::Register("qif_write:64000 annotations", 3, [=, &folder](auto& state) {
    Write(state, Document<DocumentWriter>(folder.Path(), ".qif", 64000));
  });
  for (int n = 8000; n <= 64000; n *= 2) {
    measure::Register("pmi_report:" + std::to_string(n), 5, [=, &folder](auto& state) {
      Growth<DocumentWriter>(state, folder.Path(), ".qif", n);
    });
  }
  for (int n = 250000; n <= 2000000; n *= 2) {
    measure::Register("step_growth:" + std::to_string(n), 3, [=, &folder](auto& state) {
      Growth<StepWriter>(state, folder.Path(), ".stp", n);
    });
  }
  for (const fs::path& model : stepModels) {
    measure::Register("step_memory:" + model.filename().string(), 3, [=, &folder](auto& state) {
      Memory(state, model.string(), Document<StepWriter>(folder.Path(), ".stp", 100));
    });
  }
  measure::Register("check:64000", 5,
                    [&folder](auto& state) { Check(state, folder.Path(), 64000); });
  return measure::Run(argc, argv);
}

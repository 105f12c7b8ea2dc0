// QIF documents that are written: valid, the same each time, and read as the report that they were
// written from. What differs stands in docs/qif-writing.md.

#include <libxml/parser.h>
#include <libxml/xmlschemas.h>

#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <random>

#include "EveryKind.h"
#include "HostDocuments.h"
#include "HostProgram.h"
#include "RandomModel.h"
#include "model/File.h"
#include "readers/step/StepReader.h"
#include "writers/qif/Plan.h"
#include "writers/qif/PrintQif.h"

namespace {

using Json = nlohmann::json;
using qif_writer::PrintQif;
namespace fs = std::filesystem;

ModelReport ReportOnQif(const std::string& text) { return ReportOn(ReadQifText(text, "part.qif")); }

// --- Validity ------------------------------------------------------------------------------------

void Keep(void* errors, const char* format, ...) {
  char text[500];
  va_list arguments;
  va_start(arguments, format);
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  *static_cast<std::string*>(errors) += text;
}

// What the schema has against a document; empty without the schema, too.
std::string Faults(const std::string& text) {
  if (!fs::exists(QIF_SCHEMA)) return "";
  static const std::unique_ptr<xmlSchemaParserCtxt, decltype(&xmlSchemaFreeParserCtxt)> parser(
      xmlSchemaNewParserCtxt(QIF_SCHEMA), xmlSchemaFreeParserCtxt);
  static const std::unique_ptr<xmlSchema, decltype(&xmlSchemaFree)> schema(
      xmlSchemaParse(parser.get()), xmlSchemaFree);
  std::string errors = schema == nullptr ? "the schema could not be read" : "";
  xmlDocPtr document =
      xmlReadMemory(text.data(), static_cast<int>(text.size()), "written.qif", nullptr, 0);
  xmlSchemaValidCtxtPtr context = xmlSchemaNewValidCtxt(schema.get());
  xmlSchemaSetValidErrors(context, Keep, Keep, &errors);
  if (xmlSchemaValidateDoc(context, document) != 0 && errors.empty()) errors = "not valid";
  xmlSchemaFreeValidCtxt(context);
  xmlFreeDoc(document);
  return errors;
}

TEST(HostQifWriter, SchemaIsThere) {
  if (!fs::exists(QIF_SCHEMA)) GTEST_SKIP() << "no " QIF_SCHEMA ": validity is not tested";
  EXPECT_NE(Faults("<QIFDocument xmlns='http://qifstandards.org/xsd/qif3'/>"), "");
}

// --- Round trip ----------------------------------------------------------------------------------

// What may differ where the writer has listed a reason that starts so.
struct Exception {
  const char* path;    // of the value in a report; all below it
  const char* reason;  // empty for what differs in form alone
};
constexpr Exception kExceptions[] = {
    {"name", "QIF has no name of a datum"},
    {"name", "a name in QIF has single spaces"},
    {"texts", "QIF has no second text"},
    {"texts", "QIF has no fonts that are"},
    {"datumTarget.type", ""},  // what was not answered is unknown
    {"texts", ""},             // what has a text in its display has a font there
    {"dimension.calloutType", "QIF has no links"},
    {"dimension.callouts", "QIF has no links"},
    {"dimension.texts.before", "QIF has its hole callout"},
    {"dimension.texts.after", "QIF has its hole callout"},
    {"dimension.texts", "QIF has what is drawn"},
    {"dimension.texts", "QIF has no drawn text with a name in braces"},
    {"tolerance.notes", "QIF has no drawn text with a name in braces"},
    {"dimension.texts.prefix", "QIF has no place for what is written right around"},
    {"dimension.texts.suffix", "QIF has no place for what is written right around"},
    {"dimension.tolerance", "QIF has no place for what is written right around"},
    {"dimension.texts.suffix", "QIF has no place for the name of its fit"},
    {"dimension.line", "its lines have no plane"},
    {"dimension.extensionLines", "its lines have no plane"},
    {"leaders", "its leaders have no plane"},
    {"entities", "QIF has no annotations that apply"},
    {"plane", "QIF has axes of unit length"},
    {"plane", "its axes span no plane"},
    {"position", "its view has no plane"},
    {"depth", "its view has no plane"},
    {"datumTarget.note", "QIF has the sizes"},
    {"tolerance.allAround", "it is all around"},
    {"datumTarget", "QIF asks for more of where a target lies"},
    {"datum.targets", "one of its targets is not in the document"},
    {"datum.targetIds", "one of its targets is not in the document"},
};

// A plane as the report has it, in single precision.
constexpr double kSingle = 3e-6, kDouble = 1e-12;

class RoundTrip {
 public:
  explicit RoundTrip(const ModelReport& first)
      : first_(first), document_(PrintQif(first, "test")) {}

  void Check() {
    EXPECT_EQ(Faults(document_.text), "");
    EXPECT_EQ(PrintQif(first_, "test").text, document_.text);
    // Each round has a file of its own.
    ModelReport second = ReportOnQif(document_.text);
    second.source.file = "second.qif";
    const std::string again = PrintQif(second, "test").text;
    ModelReport third = ReportOnQif(again);
    third.source.file = "third.qif";
    EXPECT_TRUE(PrintQif(third, "test").text == again) << "no fixed point";
    for (const SkippedReport& skipped : second.source.skipped) {
      EXPECT_NE(skipped.severity, "lost") << skipped.kind << ' ' << skipped.reason;
    }
    Compare(second);
  }

 private:
  static std::string Number(const Json& id) {
    std::string text = id.is_string() ? id.get<std::string>() : "";
    if (!text.empty() && text[0] == '#') text.erase(0, 1);
    return text;
  }

  static Point3 InModel(const Json& frame, const Json& place) {
    Point3 point{};
    for (std::size_t i = 0; i < 3; ++i) {
      point[i] = frame["origin"][i].get<double>();
      for (const auto& [axis, along] : {std::pair("xAxis", 0U), std::pair("yAxis", 1U)}) {
        point[i] +=
            place[along].is_null() ? 0 : place[along].get<double>() * frame[axis][i].get<double>();
      }
    }
    return point;
  }

  // The annotations by their numbers, or by their order where they have none. Where they stand is
  // taken into the model, for views may be made of planes in another order.
  std::map<std::string, Json> Annotations(const ModelReport& report, bool onlyWritten) {
    std::map<std::string, Json> found;
    const qif_writer::Units units(report);
    const Json all = Json::parse(json::PrintJson(report, "test", -1));
    long next = 0;
    for (std::size_t v = 0; v < report.views.size(); ++v) {
      const Json& view = all["views"][v];
      for (std::size_t a = 0; a < report.views[v].annotations.size(); ++a) {
        const AnnotationReport& annotation = report.views[v].annotations[a];
        if (onlyWritten && !qif_writer::WhyNotWritten(annotation, units).empty()) continue;
        Json values = view["annotations"][a];
        const Json& frame = view["frame"];
        if (!frame.is_null() && values["position"].is_array()) {
          values["position"] = InModel(frame, values["position"]);
          for (const char* lines : {"line", "extensionLines"}) {
            if (!annotation.dimension || values["dimension"][lines].is_null()) continue;
            for (Json& point : values["dimension"][lines]) point = InModel(frame, point);
          }
          for (const double x : values["position"]) size_ = std::max(size_, std::abs(x));
        }
        values["plane"] = frame.is_null() ? Json() : Json{frame["xAxis"], frame["yAxis"]};
        const std::string id = annotation.id ? Number(values["id"]) : std::to_string(++next);
        values.erase("id");
        found.emplace(id, values);
      }
    }
    return found;
  }

  void Compare(const ModelReport& second) {
    const auto before = Annotations(first_, true), after = Annotations(second, false);
    for (const auto& [id, values] : before) {
      id_ = id;
      const auto found = after.find(id);
      ASSERT_NE(found, after.end()) << id;
      const Json& plane = values["plane"];
      isStraight_ = true;
      for (const Json& axis : plane) {
        for (const double x : axis) isStraight_ = isStraight_ && (x == 0 || std::abs(x) == 1);
      }
      CompareValues("", values, found->second);
    }
    EXPECT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < first_.captures.size(); ++i) CompareCaptures(second);
  }

  void CompareCaptures(const ModelReport& second) {
    for (const CaptureReport& a : first_.captures) {
      const auto b = std::find_if(second.captures.begin(), second.captures.end(),
                                  [&](const CaptureReport& other) {
                                    return !a.id || Number(Json(*other.id)) == Number(Json(*a.id));
                                  });
      ASSERT_NE(b, second.captures.end());
      if (!a.id) continue;
      EXPECT_EQ(a.name.value_or(""), b->name.value_or(""));
      ASSERT_EQ(a.members.size(), b->members.size());
      for (std::size_t i = 0; i < a.members.size(); ++i) {
        EXPECT_EQ(Number(Json(*a.members[i].id)), Number(Json(*b->members[i].id)));
      }
      EXPECT_EQ(a.entities.size(), b->entities.size());
      ASSERT_EQ(bool(a.camera), bool(b->camera));
      ASSERT_EQ(bool(a.clippingPlane), bool(b->clippingPlane));
      EXPECT_TRUE(a.clippingPlane == b->clippingPlane);
      if (!a.camera) continue;
      EXPECT_EQ(a.camera->type, b->camera->type);
      EXPECT_EQ(a.camera->name.value_or(a.name.value_or("")), b->camera->name.value_or(""));
      EXPECT_NEAR(a.camera->zoom, b->camera->zoom, kDouble * a.camera->zoom);
      EXPECT_NEAR(a.camera->viewAngle, b->camera->viewAngle, 1e-9);
      for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(a.camera->origin[i], b->camera->origin[i], kDouble * 1000 * size_);
        EXPECT_NEAR(a.camera->target[i], b->camera->target[i], kDouble * 1000 * size_);
        EXPECT_NEAR(a.camera->viewDirection[i], b->camera->viewDirection[i], kDouble);
        EXPECT_NEAR(a.camera->viewDirectionNormal[i], b->camera->viewDirectionNormal[i], kDouble);
      }
    }
  }

  bool MayDiffer(const std::string& path, const Json& a, const Json& b) const {
    const auto isNone = [](const Json& x) { return x.is_null() || x == "" || x == Json::array(); };
    if (isNone(a) && isNone(b)) return true;
    for (const Exception& exception : kExceptions) {
      if (path.compare(0, std::string(exception.path).size(), exception.path) != 0) continue;
      if (*exception.reason == '\0') {
        if (a.is_null()) return true;
        continue;
      }
      for (const SkippedReport& omitted : document_.omitted) {
        const bool isHere =
            omitted.id.empty() || omitted.kind == "view" || Number(Json(omitted.id)) == id_;
        if (isHere && omitted.reason.find(exception.reason) == 0) return true;
      }
    }
    return false;
  }

  void CompareValues(const std::string& path, const Json& a, const Json& b) {
    if (a.is_object() && b.is_object()) {
      for (const auto& [key, value] : a.items()) {
        CompareValues(path.empty() ? key : path + '.' + key, value, b.value(key, Json()));
      }
    } else if (a.is_array() && b.is_array() && a.size() == b.size()) {
      for (std::size_t i = 0; i < a.size(); ++i) CompareValues(path, a[i], b[i]);
    } else if (a.is_number() && b.is_number()) {
      const bool isSingle = path == "position" || path == "depth" || path == "plane" ||
                            path.find("ine") != std::string::npos ||
                            (path.find("leaders") == 0 && !isStraight_);
      const bool isPoint =
          isSingle || path.find("leaders") == 0 || path.find(".point") < path.size();
      const double slack = isPoint ? (isSingle ? kSingle : kDouble) * size_ : 0;
      const bool isNear = std::abs(a.get<double>() - b.get<double>()) <= slack;
      if (!isNear && !MayDiffer(path, a, b)) {
        ADD_FAILURE() << id_ << ' ' << path << ": " << a << " became " << b;
      }
    } else if (a.is_string() && b.is_string() && Number(a) == Number(b)) {
    } else if (path == "written.text") {
      EXPECT_EQ(std::stod(a.get<std::string>()), std::stod(b.get<std::string>()));
    } else if (a != b && !MayDiffer(path, a, b)) {
      ADD_FAILURE() << id_ << ' ' << path << ": " << a << " became " << b;
    }
  }

  const ModelReport& first_;
  qif_writer::QifDocument document_;
  std::string id_;
  bool isStraight_ = true;  // the plane runs along the axes
  double size_ = 1;
};

ModelReport ReportOnFile(const std::string& path) {
  const std::string text = ReadFile(path);
  return ReportOn(IsStep(text) ? ReadStepText(text, path) : ReadQifText(text, path));
}

TEST(HostQifWriter, WhatIsWrittenIsReadBack) {
  std::vector<std::string> models = {BUNDLED_MODEL, STEP_MODEL};
  for (const char* set : {"", "step"}) {
    const fs::path folder = fs::path(REAL_MODELS) / set;
    if (!fs::is_directory(folder)) continue;
    for (const auto& file : fs::directory_iterator(folder)) {
      const std::string ending = file.path().extension();
      if (ending == ".qif" || ending == ".stp") models.push_back(file.path());
    }
  }
  for (const std::string& model : models) {
    SCOPED_TRACE(model);
    RoundTrip(ReportOnFile(model)).Check();
  }
}

// --- Models of the tests -------------------------------------------------------------------------

ModelReport ReportOn(standin::Part& part) {
  static const PluginLibrary plugin(PLUGIN);
  const auto exporter = plugin.CreateExporter(part.GetDocument());
  ModelReport report = MakeReport(Model(), *exporter, "part.qif");
  report.source.linearUnit = "mm";
  return report;
}

// Gives annotations values by lot, as readers give them: those of the stand-in have none.
class Dresser {
 public:
  explicit Dresser(unsigned seed) : engine_(seed) {}

  void Dress(ModelReport& report) {
    for (ViewReport& view : report.views) {
      for (AnnotationReport& annotation : view.annotations) {
        annotation.id = "#" + std::to_string(next_ += 1 + Below(3));
        if (annotation.datum) Dress(*annotation.datum, *annotation.id);
      }
    }
    for (ViewReport& view : report.views) {
      for (AnnotationReport& annotation : view.annotations) {
        if (annotation.dimension) Dress(*annotation.dimension);
        if (annotation.tolerance) Dress(*annotation.tolerance);
        if (annotation.roughness) {
          annotation.roughness->fields = {"1.6 um", {}, "MILLED", "0.8", {}, "M", {}};
          annotation.roughness->obtention = "machiningForbidden";
        }
        if (annotation.datumTarget) annotation.datumTarget->type = "point";
        if (annotation.datumTarget) annotation.datumTarget->point1 = {Value(), Value(), Value()};
      }
    }
  }

 private:
  int Below(int count) { return static_cast<int>(engine_() % static_cast<unsigned>(count)); }
  double Value() { return Below(100000) / 1000.0; }
  template <std::size_t kCount>
  const char* OneOf(const char* const (&texts)[kCount]) {
    return texts[Below(static_cast<int>(kCount))];
  }

  void Dress(DatumReport& datum, const std::string& id) {
    datum.label = std::string(1, static_cast<char>('A' + Below(26)));
    datum.targets.clear();
    datum.targetIds.clear();
    datums_.push_back({id, datum.label, {}});
  }

  void Dress(DimensionReport& dimension) {
    const std::pair<const char*, const char*> types[] = {
        {"diameter", "diametral"},     {"length", "linear"},   {"angle", "angular"},
        {"radius", "radial"},          {"distance", "linear"}, {"userDefined", "userDefined"},
        {"curveLength", "curveLength"}};
    std::tie(dimension.type, dimension.mainType) = types[Below(7)];
    dimension.value = Value();
    dimension.precision = Below(6);
    dimension.callouts.clear();
    dimension.calloutType.reset();
    dimension.texts = {};
    dimension.texts.before = OneOf({"", "", "4X", "2 MAX", "TYP R", "3X 3X MIN", "A (", "4XB"});
    dimension.texts.after = OneOf({"", "", "THRU", "mm", "mmx", "TO 5", ") A", "\u2334 A", "{BR}"});
    dimension.tolerance = Below(2) == 0 ? "plusMinus" : "none";
    dimension.upper = dimension.lower = dimension.tolerancePrecision = Number();
    if (dimension.tolerance == "none") return;
    dimension.upper = Value() / 100;
    dimension.lower = -Value() / 100;
    dimension.tolerancePrecision = Below(6);
  }

  void Dress(ToleranceReport& tolerance) {
    const char* const types[] = {"position", "flatness",       "surfaceProfile", "perpendicularity",
                                 "symmetry", "circularRunout", "conicity"};
    const int kind = Below(7);
    tolerance.type = types[kind];
    tolerance.allAround = kind == 2 && Below(2) == 0;
    for (Text* note : {&tolerance.notes.before, &tolerance.notes.after, &tolerance.notes.upper}) {
      *note = OneOf({"", "", "4X", "a\nb", "SEE {M}", "{m}"});
    }
    tolerance.rows.clear();
    for (int rows = kind == 0 || kind == 2 ? 1 + Below(4) : 1; rows > 0; --rows) {
      RowReport& row = tolerance.rows.emplace_back();
      row.valueType = kind == 0 && Below(2) == 0 ? "diametrical" : "none";
      row.magnitude = Value();
      row.refinement = row.rateUnit1 = row.rateUnit2 = 0;
      if (kind == 0 && Below(2) == 0)
        row.modifiers = {{"maximumMaterial", {}}, {"projectedZone", Value()}};
      if (kind == 2 && Below(2) == 0) row.modifiers = {{"unequallyDisposed", Value()}};
      if (datums_.empty() || kind == 1 || kind == 6) continue;
      row.frame.emplace();
      for (int count = Below(4); count > 0; --count)
        Reference(row.frame->references.emplace_back());
    }
  }

  void Reference(ReferenceReport& reference) {
    for (int count = 1 + Below(3); count > 0; --count) {
      FrameDatumReport datum =
          datums_[static_cast<std::size_t>(Below(static_cast<int>(datums_.size())))];
      if (Below(3) == 0) datum.modifiers = {{"leastMaterial", {}}, {"translation", {}}};
      reference.label =
          reference.datums.empty() ? datum.label : *reference.label + "-" + *datum.label;
      reference.datums.push_back(std::move(datum));
    }
  }

  std::mt19937 engine_;
  int next_ = 4;
  std::vector<FrameDatumReport> datums_;
};

TEST(HostQifWriter, ModelsOfTheTestsAreReadBack) {
  EveryKind every;
  RoundTrip(ReportOn(every.part)).Check();
  for (unsigned seed = 0; seed < 500; ++seed) {
    SCOPED_TRACE(seed);
    RandomModel model(seed);
    ModelReport report = ReportOn(model.part);
    if (seed % 5 == 0) RoundTrip(report).Check();
    Dresser(seed).Dress(report);
    RoundTrip(report).Check();
    if (HasFailure()) return;
  }
}

// --- What QIF cannot say -------------------------------------------------------------------------

// A report that can be written whole.
struct Plain {
  Plain() {
    ViewReport view;
    view.id = "view 1";
    view.frame = {{0, 0, 5}, {1, 0, 0}, {0, 1, 0}};
    const auto add = [&](const char* kind, const char* id) -> AnnotationReport& {
      AnnotationReport& annotation = view.annotations.emplace_back();
      annotation.kind = kind;
      annotation.id = id;
      annotation.name = std::string("N") + id;
      annotation.position = {1, 2};
      annotation.entities = {{"face", "100", "top"}};
      return annotation;
    };
    view.annotations.reserve(6);
    DimensionReport& size = add("dimension", "10").dimension.emplace();
    size.type = "diameter";
    size.tolerance = "none";
    size.value = 8;
    size.precision = 0;
    ToleranceReport& position = add("geometricTolerance", "20").tolerance.emplace();
    position.type = "position";
    position.rows.emplace_back().magnitude = 0.4;
    add("datum", "A").datum.emplace().label = "NA";
    add("datumTarget", "A1").datumTarget = DatumTargetReport{"NA1", "point", "", Point3{}, {}};
    add("roughness", "40").roughness = RoughnessReport{{}, {}, {"1.6"}};
    add("text", "50").texts = {{"LINE", {}}};
    report.views = {view};
    report.captures = {{"90", "Front", {}, {}, {}, 1, {{"10", {}}}, {}}};
    report.source.file = "part.stp";
    report.source.linearUnit = "mm";
  }
  AnnotationReport& At(std::size_t i) { return report.views[0].annotations[i]; }
  DimensionReport& Size() { return *At(0).dimension; }
  ToleranceReport& Tolerance() { return *At(1).tolerance; }
  RowReport& Row() { return Tolerance().rows[0]; }
  DatumTargetReport& Target() { return *At(3).datumTarget; }
  CaptureReport& Front() { return report.captures[0]; }
  ModelReport report;
};

struct Omission {
  const char* severity;
  const char* reason;
  void (*change)(Plain&);
};
const Omission kOmissions[] = {
    {"lost", "QIF has no annotations of this kind", [](Plain& p) { p.At(5).kind = "unknown"; }},
    {"lost", "QIF has no dimension of type", [](Plain& p) { p.Size().type = "unknown"; }},
    {"lost", "QIF has no tolerance of type", [](Plain& p) { p.Tolerance().type = "unknown"; }},
    {"lost", "a QIF tolerance needs a value", [](Plain& p) { p.Row().magnitude.reset(); }},
    {"lost", "its label is no name", [](Plain& p) { p.At(2).datum->label = "A B"; }},
    {"lost", "a QIF texture needs a roughness average",
     [](Plain& p) { p.At(4).roughness->fields = {"Ra 1.6"}; }},
    {"lost", "QIF has no place for",
     [](Plain& p) {
       p.At(4).roughness->fields = {"1", {}, {}, "x"};
     }},
    {"reduced", "it has its place in one view only",
     [](Plain& p) { p.report.views.push_back(p.report.views[0]); }},
    {"reduced", "QIF has no second text", [](Plain& p) { p.At(5).texts.resize(2); }},
    {"reduced", "QIF has no fonts",
     [](Plain& p) {
       p.At(5).texts[0].font = FontReport{false, false, false, false, true, false, 3, 1, 0};
     }},
    {"reduced", "QIF has no texts above and below", [](Plain& p) { p.Size().texts.upper = "x"; }},
    {"reduced", "QIF has no links", [](Plain& p) { p.Size().calloutType = "hole"; }},
    {"reduced", "QIF has no prefix and suffix", [](Plain& p) { p.Tolerance().notes.prefix = "x"; }},
    {"reduced", "QIF has no name of a datum", [](Plain& p) { p.At(2).name = "x"; }},
    {"reduced", "a name in QIF has single spaces only", [](Plain& p) { p.At(0).name = "a  b"; }},
    {"reduced", "a name in QIF has single spaces only",
     [](Plain& p) { p.At(2).name = p.At(2).datum->label = "A "; }},
    {"reduced", "a name in QIF has single spaces only",
     [](Plain& p) { p.Row().frame.emplace().note = "A  B"; }},
    {"reduced", "QIF has no place for what is written right around",
     [](Plain& p) { p.Size().texts.prefix = "x"; }},
    {"reduced", "QIF has no place for the name of its fit",
     [](Plain& p) { p.Size().texts.suffix = "H7", p.Size().upperText = "8.2"; }},
    {"reduced", "QIF has its hole callout",
     [](Plain& p) { p.Size().texts.holeCallout = "4X 8", p.Size().texts.before = "3X"; }},
    {"reduced", "QIF has a thread's text", [](Plain& p) { p.Size().type = "thread"; }},
    {"reduced", "a limit is a text", [](Plain& p) { p.Size().upperText = "x"; }},
    {"reduced", "its number of decimal places", [](Plain& p) { p.Size().precision = 0.5; }},
    {"lost", "a limit of it is no number",
     [](Plain& p) { p.Size().tolerancePrecision = 1, p.Size().upper = std::nan(""); }},
    {"lost", "QIF has no limits of a thread",
     [](Plain& p) { p.Size().type = "thread", p.Size().tolerancePrecision = 1; }},
    {"reduced", "QIF has what is drawn", [](Plain& p) { p.Size().texts.before = "2 MAX"; }},
    {"reduced", "QIF has what is drawn", [](Plain& p) { p.Size().texts.before = "MAX R"; }},
    {"reduced", "QIF has what is drawn", [](Plain& p) { p.Size().texts.before = "A  B"; }},
    {"reduced", "QIF has no drawn text with a name in braces",
     [](Plain& p) { p.Size().texts.before = "{BR}"; }},
    {"reduced", "QIF has what is drawn", [](Plain& p) { p.Size().texts.before = "4X \u2300"; }},
    {"reduced", "QIF has what is drawn", [](Plain& p) { p.Size().texts.after = "TO 3"; }},
    {"reduced", "QIF has what is drawn", [](Plain& p) { p.Size().texts.after = "mm"; }},
    {"reduced", "QIF has what is drawn", [](Plain& p) { p.Size().texts.after = ") X"; }},
    {"reduced", "QIF has what is drawn", [](Plain& p) { p.Size().texts.after = "\u21A7"; }},
    {"reduced", "QIF has what is drawn",
     [](Plain& p) { p.Size().texts.before = "4X", p.Size().value.reset(); }},
    {"reduced", "QIF has its hole callout",
     [](Plain& p) { p.Size().texts.holeCallout = "4X 8 THRU", p.Size().texts.after = "DEEP"; }},
    {"reduced", "QIF has no drawn text with a name in braces",
     [](Plain& p) { p.Size().texts.after = "a{{BR}"; }},
    {"reduced", "QIF has no drawn text with a name in braces",
     [](Plain& p) { p.Tolerance().notes.upper = "{M}"; }},
    {"reduced", "whether it is a length or an angle",
     [](Plain& p) { p.Size().type = "userDefined"; }},
    {"reduced", "QIF asks for more of a coordinate or taper",
     [](Plain& p) { p.Size().type = "flatTaper"; }},
    {"reduced", "spaces in its texts",
     [](Plain& p) {
       p.At(4).roughness->fields = {"1", {}, "A  B"};
     }},
    {"reduced", "its values stand in the report's unit",
     [](Plain& p) {
       p.At(0).written = {{"value", "x", "ell"}};
     }},
    {"reduced", "its values stand in the report's unit",
     [](Plain& p) {
       p.At(3).written = {{"point1", "1 2 3", "ell"}};
     }},
    {"lost", "its value is no number", [](Plain& p) { p.Size().value = std::nan(""); }},
    {"lost", "QIF has no annotations that apply to",
     [](Plain& p) { p.At(0).entities[0].kind = "note"; }},
    {"lost", "QIF has no place for basic",
     [](Plain& p) {
       p.Row().modifiers = {{"basic", {}}};
     }},
    {"lost", "QIF has no square zone", [](Plain& p) { p.Row().valueType = "square"; }},
    {"lost", "QIF has no place for its tolerance on a unit basis",
     [](Plain& p) { p.Row().refinement = 1; }},
    {"lost", "its tolerance on a unit basis is no number",
     [](Plain& p) { p.Tolerance().type = "flatness", p.Row().rateUnit1 = std::nan(""); }},
    {"lost", "QIF has no place for a row's tolerance",
     [](Plain& p) { p.Tolerance().rows.resize(2, p.Row()), p.Tolerance().rows[1].rateUnit1 = 1; }},
    {"lost", "QIF has no zone shape",
     [](Plain& p) { p.Tolerance().type = "surfaceProfile", p.Row().valueType = "spherical"; }},
    {"lost", "QIF has one length",
     [](Plain& p) {
       p.Tolerance().type = "straightness", p.Row().rateUnit1 = p.Row().rateUnit2 = 1;
     }},
    {"lost", "QIF has no datum reference frame",
     [](Plain& p) { p.Tolerance().type = "flatness", p.Row().frame.emplace(); }},
    {"lost", "QIF has no more rows", [](Plain& p) { p.Tolerance().rows.resize(5, p.Row()); }},
    {"lost", "a row of it has no value", [](Plain& p) { p.Tolerance().rows.resize(2); }},
    {"lost", "a row of it has no value",
     [](Plain& p) {
       p.Tolerance().rows.resize(2, p.Row()), p.Tolerance().rows[1].magnitude = std::nan("");
     }},
    {"lost", "a datum reference has no datum",
     [](Plain& p) { p.Row().frame.emplace().references.resize(1); }},
    {"lost", "one of its common datums",
     [](Plain& p) {
       p.Row().frame.emplace().references = {{"A-B", {{"A", "A", {}}, {"B", "B", {}}}}};
     }},
    {"lost", "QIF has no place for tangentPlane of a datum",
     [](Plain& p) {
       p.Row().frame.emplace().references = {
           {"A", {{"A", "A", {{"leastMaterial", {}}, {"tangentPlane", {}}}}}}};
     }},
    {"lost", "QIF has five datum references at most",
     [](Plain& p) {
       p.Row().frame.emplace().references.resize(6, {"A", {{"A", "A", {}}}});
     }},
    {"lost", "it is all around", [](Plain& p) { p.Tolerance().allAround = true; }},
    {"ignored", "QIF asks for a direction", [](Plain& p) { p.Tolerance().type = "lineProfile"; }},
    {"lost", "one of its targets", [](Plain& p) { p.At(2).datum->targetIds = {"9"}; }},
    {"lost", "QIF asks for more of where", [](Plain& p) { p.Target().point1.reset(); }},
    {"lost", "QIF asks for more of where", [](Plain& p) { p.Target().type = "area"; }},
    {"reduced", "QIF has the sizes", [](Plain& p) { p.Target().note = "8"; }},
    {"lost", "its view has no plane", [](Plain& p) { p.report.views[0].frame.reset(); }},
    {"lost", "its leaders have no plane",
     [](Plain& p) {
       p.report.views[0].frame.reset(), p.At(0).leaders = {{{{0, 0, 5}, {1, 0, 5}}}};
     }},
    {"lost", "its lines have no plane",
     [](Plain& p) { p.report.views[0].frame.reset(), p.Size().line.emplace(); }},
    {"lost", "its place is no number", [](Plain& p) { p.At(0).depth = std::nan(""); }},
    {"lost", "its axes span no plane",
     [](Plain& p) {
       p.report.views[0].frame->yAxis = {1, 0, 0};
     }},
    {"ignored", "QIF has axes of unit length",
     [](Plain& p) {
       p.report.views[0].frame->yAxis = {0, 2, 0};
     }},
    {"reduced", "a leader is drawn in the plane",
     [](Plain& p) {
       p.At(0).leaders = {{{{0, 0, 5}, {0, 0, 9}}}};
     }},
    {"lost", "a leader has no ends",
     [](Plain& p) {
       p.At(0).leaders = {{{{0, 0, 5}, {0, 0, std::nan("")}}}};
     }},
    {"lost", "it shows annotations", [](Plain& p) { p.Front().members[0].id = "11"; }},
    {"lost", "a saved view of QIF shows",
     [](Plain& p) {
       p.Front().entities = {{"face", "100", {}}};
     }},
    {"reduced", "QIF has no hidden text", [](Plain& p) { p.Front().hiddenText = "x"; }},
    {"lost", "QIF has no such camera", [](Plain& p) { p.Front().camera.emplace(); }},
    {"reduced", "its target is not straight ahead",
     [](Plain& p) {
       p.Front().camera = {{}, "parallel", {1, 0, 9}, {0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 0, 1};
     }},
    {"reduced", "its angle does not fit its zoom",
     [](Plain& p) {
       p.Front().camera = {{}, "parallel", {0, 0, 9}, {0, 0, 0}, {0, 0, -1}, {0, 1, 0}, 9, 1};
     }},
    {"lost", "it is cut by no plane",
     [](Plain& p) {
       p.Front().clippingPlane = {{{0, 0, 0}, {0, 0, 0}}};
     }},
    {"reduced", "the size of its unit", [](Plain& p) { p.report.source.linearUnit = "ell"; }},
};

TEST(HostQifWriter, WhatQifCannotSayIsListed) {
  EXPECT_EQ(PrintQif(Plain().report, "test").omitted.size(), 0U);
  const std::string table = ReadFile(QIF_WRITING);
  for (const Omission& omission : kOmissions) {
    const char* const reason = omission.reason;
    SCOPED_TRACE(reason);
    Plain plain;
    omission.change(plain);
    const qif_writer::QifDocument document = PrintQif(plain.report, "test");
    EXPECT_EQ(Faults(document.text), "");
    const auto is = [&](const SkippedReport& omitted) {
      return omitted.severity == omission.severity && omitted.reason.find(reason) == 0;
    };
    const auto found = std::find_if(document.omitted.begin(), document.omitted.end(), is);
    EXPECT_NE(found, document.omitted.end());
    if (found == document.omitted.end()) continue;
    EXPECT_NE(document.text.find(qif_writer::LineFor(*found)), std::string::npos);
    EXPECT_NE(table.find(reason), std::string::npos);
  }
}

TEST(HostQifWriter, OmissionsAreLines) {
  SkippedReport omission = {"lost", "dimension", "12", "12", "why", 0, 1};
  EXPECT_EQ(qif_writer::LineFor(omission), "lost: dimension 12: why");
  omission.id.clear();
  omission.count = 2;
  EXPECT_EQ(qif_writer::LineFor(omission), "lost: dimension: why (2 times)");
}

TEST(HostQifWriter, EveryReasonThatIsDocumentedIsTested) {
  std::istringstream table(ReadFile(QIF_WRITING));
  std::size_t rows = 0;
  for (std::string line; std::getline(table, line);) {
    if (line.find("| lost |") == std::string::npos &&
        line.find("| reduced |") == std::string::npos &&
        line.find("| ignored |") == std::string::npos) {
      continue;
    }
    ++rows;
    const std::string reason = line.substr(2, std::min(line.find(" ..."), line.find(" |")) - 2);
    const bool isTested =
        std::any_of(std::begin(kOmissions), std::end(kOmissions), [&](const Omission& omission) {
          const std::string tested = omission.reason;
          return reason.find(tested) == 0 || tested.find(reason) == 0;
        });
    EXPECT_TRUE(isTested) << line;
  }
  EXPECT_GT(rows, 50U);
}

// --- What QIF says in a roundabout way -----------------------------------------------------------

AnnotationReport& Of(ModelReport& report, const std::string& kind) {
  for (ViewReport& view : report.views) {
    for (AnnotationReport& annotation : view.annotations) {
      if (annotation.kind == kind) return annotation;
    }
  }
  throw std::logic_error("no " + kind);
}

void MakeDimension(ModelReport& report, const char* type, const char* mainType) {
  DimensionReport& dimension = *Of(report, "dimension").dimension;
  dimension.type = type;
  dimension.mainType = mainType;
}

void MakeThread(ModelReport& report, const char* callout) {
  MakeDimension(report, "thread", "thread");
  Of(report, "dimension").dimension->texts.holeCallout = callout;
}

struct Kept {
  const char* what;
  void (*change)(ModelReport&);
};
const Kept kKept[] = {
    {"hidden",
     [](ModelReport& report) {
       for (ViewReport& view : report.views) {
         for (AnnotationReport& annotation : view.annotations) annotation.hidden = true;
       }
     }},
    {"a coordinate", [](ModelReport& r) { MakeDimension(r, "linearCoordinate", "coordinate"); }},
    {"an angle", [](ModelReport& r) { MakeDimension(r, "angularCoordinate", "coordinate"); }},
    {"a taper of a cone", [](ModelReport& r) { MakeDimension(r, "conicalTaper", "taper"); }},
    {"a taper", [](ModelReport& r) { MakeDimension(r, "flatTaper", "taper"); }},
    {"a thread", [](ModelReport& r) { MakeThread(r, "8-1.25-M-6H"); }},
    {"another thread", [](ModelReport& r) { MakeThread(r, "8-20-UNC-2A"); }},
    {"texts around a value",
     [](ModelReport& r) {
       DimensionTextsReport& texts = Of(r, "dimension").dimension->texts;
       texts.before = "4X DEEP";
       texts.after = "THRU";
     }},
    {"a hole callout",
     [](ModelReport& r) {
       DimensionTextsReport& texts = Of(r, "dimension").dimension->texts;
       texts.holeCallout = "4X \u23008 \u2334";
       texts.before = "4X";
       texts.after = "\u2334";
     }},
    {"a fit", [](ModelReport& r) { Of(r, "dimension").dimension->texts.suffix = "H7"; }},
    {"braces of a note", [](ModelReport& r) { Of(r, "text").texts[0].string = "A{BR}B {M}"; }},
    {"an area",
     [](ModelReport& r) {
       AnnotationReport& target = Of(r, "datumTarget");
       target.entities.clear();
       target.datumTarget->type = "area";
       target.datumTarget->point1.reset();
     }},
    {"leaders in a plane that runs along no axis",
     [](ModelReport& r) {
       using namespace points;
       const Point3 x = {std::sqrt(0.3), std::sqrt(0.7), 0}, y = {0, 0, 1}, o = {100, 200, 5};
       r.views[0].frame = {o, {float(x[0]), float(x[1]), 0}, y};
       for (AnnotationReport& annotation : r.views[0].annotations) {
         annotation.position = {0, 0};
         annotation.leaders = {{{o + 70.0 * x, o}}};
       }
     }},
};

TEST(HostQifWriter, WhatQifSaysInARoundaboutWayIsReadBack) {
  Plain plain;
  plain.At(2).id = "30";
  plain.At(3).id = "31";
  const std::string text = PrintQif(plain.report, "test").text;
  for (const Kept& kept : kKept) {
    SCOPED_TRACE(kept.what);
    ModelReport report = ReportOnQif(text);
    kept.change(report);
    for (const SkippedReport& omitted : PrintQif(report, "test").omitted) {
      EXPECT_EQ(omitted.reason, "QIF asks for more of a coordinate or taper than the report tells");
    }
    RoundTrip(report).Check();
  }
}

// A document with no geometry names the file that has it, however often it is written again.
TEST(HostQifWriter, NamesTheFileOfThePart) {
  Plain plain;
  plain.report.source.file = "parts/part.stp";
  for (const char* format : {"STEP AP242", "QIF 3.0"}) {
    plain.report.source.format = format;
    ModelReport report = ReportOnQif(PrintQif(plain.report, "test").text);
    EXPECT_EQ(report.source.partFile, "part.stp");
    EXPECT_EQ(report.source.partFormat, format);
    report.source.file = "written.qif";
    EXPECT_EQ(ReportOnQif(PrintQif(report, "test").text).source.partFile, "part.stp");
  }
  EXPECT_EQ(ReportOnFile(BUNDLED_MODEL).source.partFile, "");
}

// The program: the list on standard error, the exit code, and a file that is written whole or not.
class QifProgram : public HostProgram {};

TEST_F(QifProgram, WritesTheFileWholeOrNotAtAll) {
  const std::string file = File("out.qif", "old");
  EXPECT_EQ(Run("/dev/null --qif " + file).code, 2);
  EXPECT_EQ(Read(file), "old");
  EXPECT_EQ(Run(std::string(BUNDLED_MODEL) + " --qif " + file).code, 0);
  EXPECT_EQ(Faults(Read(file)), "");
  EXPECT_GE(Run("--qif " + file + " " + BUNDLED_MODEL + " " + STEP_MODEL).code, 100);
  // What was there stays there when there is no room for the new one.
  File("out.qif", "old");
  EXPECT_EQ(Shell("ulimit -f 8; \"$P\" '" BUNDLED_MODEL "' --qif \"$F\"/out.qif").code, 1);
  EXPECT_EQ(Read(file), "old");
  fs::create_directory(folder_ / "folder");
  for (const std::string& place :
       {(folder_ / "folder").string(), file + "/in.qif", (folder_ / "none" / "x.qif").string(),
        std::string("/dev/full")}) {
    EXPECT_EQ(Run(std::string(BUNDLED_MODEL) + " --qif " + place).code, 1) << place;
  }
  for (const auto& entry : fs::directory_iterator(folder_)) {
    EXPECT_NE(entry.path().filename().string().find(".pmi_report"), 0U) << entry.path();
  }
}

}  // namespace

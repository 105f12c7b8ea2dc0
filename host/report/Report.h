#pragma once

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// What a plug-in answered about one model. Texts are UTF-8; lengths are in the model's length unit,
// angles in degrees. What the plug-in did not give is absent.

using Text = std::optional<std::string>;
using Number = std::optional<double>;
using Point2 = std::array<double, 2>;
using Point3 = std::array<double, 3>;

struct FontReport {
  bool fixedPitch, bold, italic, underline, strikeThrough, overline;
  double height, ratio, slant;
};

struct TextReport {
  Text string;
  std::optional<FontReport> font;
};

// A model entity: its kind, its persistent id, and the document's label (the id where it has none).
struct EntityReport {
  std::string kind;
  Text id, label;
};

// A face, edge, vertex or body that PMI applies to, with the ids of the annotations, in the
// report's order.
struct AppliedEntityReport {
  EntityReport entity;
  std::vector<Text> annotations;
};

// A value as the document writes it, where its unit is not the model's.
struct WrittenReport {
  std::string field, text, unit;
};

struct ModifierReport {
  Text type;
  Number magnitude;
};

struct FrameDatumReport {
  Text id, label;  // the id is the datum annotation's
  std::vector<ModifierReport> modifiers;
};

struct ReferenceReport {
  Text label;
  std::vector<FrameDatumReport> datums;
};

struct FrameReport {
  Text note;
  std::vector<ReferenceReport> references;
};

struct RowReport {
  Text valueType;
  Number magnitude, refinement, rateUnit1, rateUnit2;
  std::vector<ModifierReport> modifiers;
  std::optional<FrameReport> frame;
};

// The texts around a feature control frame.
struct ToleranceNotesReport {
  Text before, after, upper, lower, prefix, suffix;
};

struct ToleranceReport {
  Text type;
  std::optional<bool> allAround;
  std::vector<RowReport> rows;
  ToleranceNotesReport notes;
};

struct CalloutReport {
  Text id, name, calloutType;
  Number value;
};

// The texts around a dimension.
struct DimensionTextsReport {
  Text prefix, suffix, before, after, upper, lower, holeCallout, below;
};

struct DimensionReport {
  Text type, mainType, calloutType;
  // "none", "limits", "plusMinus", "basic" or "reference"; empty where it was not answered.
  std::string tolerance;
  Number value, precision, lower, upper, tolerancePrecision;
  Text upperText, lowerText;
  DimensionTextsReport texts;
  std::optional<std::array<Point2, 2>> line;
  std::optional<std::array<Point2, 3>> extensionLines;
  std::vector<CalloutReport> callouts;
};

struct DatumReport {
  Text label;
  std::vector<Text> targets, targetIds;  // labels and ids of the same targets
};

struct DatumTargetReport {
  Text label, type, note;
  std::optional<Point3> point1, point2;
};

struct RoughnessReport {
  Text obtention, applicability;
  std::vector<Text> fields;
};

// A part that only annotations of one kind have: allocated where it is present. Copies share it.
template <typename T>
class Part {
 public:
  Part& operator=(T value) {
    value_ = std::make_shared<T>(std::move(value));
    return *this;
  }
  T& emplace() { return *(value_ = std::make_shared<T>()); }
  explicit operator bool() const { return value_ != nullptr; }
  T& operator*() const { return *value_; }
  T* operator->() const { return value_.get(); }

 private:
  std::shared_ptr<T> value_;
};

struct AnnotationReport {
  std::string kind;
  Text id;  // persistent, as the plug-in answers it
  Text name;
  std::optional<bool> hidden;
  std::vector<TextReport> texts;
  std::vector<EntityReport> entities;
  std::optional<Point2> position;
  Number depth;
  // Tail and head; not a number where the plug-in gave none.
  std::vector<std::array<Point3, 2>> leaders;
  Part<DimensionReport> dimension;
  Part<ToleranceReport> tolerance;
  Part<DatumReport> datum;
  Part<DatumTargetReport> datumTarget;
  Part<RoughnessReport> roughness;
  std::vector<WrittenReport> written;
};

struct ViewFrameReport {
  Point3 origin, xAxis, yAxis;
};

struct ViewReport {
  Text id;  // persistent where the view has one, else "view 1" and so on by its place
  std::optional<ViewFrameReport> frame;
  std::vector<AnnotationReport> annotations;
};

struct CameraReport {
  Text name;
  std::string type;
  Point3 origin, target, viewDirection, viewDirectionNormal;
  double viewAngle, zoom;
};

// An annotation that a capture shows.
struct MemberReport {
  Text id, name;
};

struct CaptureReport {
  Text id, name, hiddenText;
  std::optional<CameraReport> camera;
  std::optional<std::array<Point3, 2>> clippingPlane;  // point and normal
  long memberCount = 0;
  std::vector<MemberReport> members;   // the annotations among the members
  std::vector<EntityReport> entities;  // all others, such as bodies
};

// What the reader left out. The severity is "lost", "reduced" or "ignored".
struct SkippedReport {
  std::string severity, kind, id, annotation, reason;
  long line = 0, count = 1;
};

struct SourceReport {
  std::string file, format;
  std::string partFile, partFormat;           // of the entities, where the document names another
  std::string linearUnit;                     // of all lengths in the report
  std::string pmiLinearUnit, pmiAngularUnit;  // of the document's PMI, where they are others
  std::map<std::string, long> counts;
  std::vector<SkippedReport> skipped;
};

// A rule that was applied to the report. The severity is "error", "warning" or "note".
struct RuleReport {
  std::string id, severity, title;
  std::string standard;  // where it comes from; empty where no standard says so
  std::string advice;    // what to do about a finding
};

// What breaks a rule, with the id and name of the annotation or capture that does, as far as there
// is one and it has them.
struct FindingReport {
  std::size_t rule;  // index into the rules
  Text annotation, name;
  std::string message;
};

// The findings of the rules, those of the first rule first.
struct ChecksReport {
  std::vector<RuleReport> rules;
  std::vector<FindingReport> findings;
};

struct ModelReport {
  std::map<std::string, long> totals;
  std::vector<ViewReport> views;
  std::vector<CaptureReport> captures;
  std::vector<AppliedEntityReport> entities;
  SourceReport source;
  std::optional<ChecksReport> checks;  // absent where no rules were applied
};

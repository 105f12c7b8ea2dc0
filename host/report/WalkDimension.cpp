// Dimensions: values, limits, texts, lines, callouts.

#include "report/Answers.h"
#include "report/EnumNames.h"
#include "report/WalkAnnotation.h"

namespace {

Text CalloutType(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  return EnumText<KOVAPMICalloutFeatureAnnotationType>(
      [&](auto& type) { return exporter.GetCalloutFeatureAnnotationProperties(annotation, type); });
}

// A negative number of decimal places marks a number that the document does not state.
bool IsStated(double decimalPlaces) { return !(decimalPlaces < 0); }

void ReadValue(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation, Number& value,
               Number& precision) {
  double number = 0;
  double places = 0;
  KOVAPMIUnit unit = UnitUnknown;
  if (!exporter.GetDimensionValue(annotation, number, unit, places).IsSuccess()) return;
  if (!IsStated(places)) return;
  value = number;
  precision = places;
}

bool StandsBetween(const DimensionTextsReport& texts, std::string_view open, char close) {
  return texts.prefix == open && !texts.suffix.value_or("").empty() &&
         texts.suffix->back() == close;
}

// Which tolerance a dimension has, as a drawing shows it.
const char* KindOfTolerance(const DimensionReport& dimension) {
  if (StandsBetween(dimension.texts, "[", ']')) return "basic";
  if (StandsBetween(dimension.texts, "(", ')')) return "reference";
  if (dimension.upperText.value_or("") != "" || dimension.lowerText.value_or("") != "") {
    return "limits";
  }
  return dimension.tolerancePrecision ? "plusMinus" : "none";
}

void ReadValues(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation,
                DimensionReport& report) {
  ReadValue(exporter, annotation, report.value, report.precision);
  double precision = 0;
  double lower = 0;
  double upper = 0;
  bool hasTolerance = false;
  KOVAString upperText;
  KOVAString lowerText;
  if (exporter
          .GetDimensionTolerance(annotation, lower, upper, precision, hasTolerance, upperText,
                                 lowerText)
          .IsSuccess()) {
    if (IsStated(precision)) {
      report.lower = lower;
      report.upper = upper;
      report.tolerancePrecision = precision;
    }
    report.upperText = TextOf(upperText);
    report.lowerText = TextOf(lowerText);
  }
  // Texts that the query leaves alone stay marked.
  const KOVAString unset(L"\x1");
  KOVAString prefix = unset, suffix = unset, before = unset, after = unset;
  KOVAString above = unset, underneath = unset, holeCallout = unset, below = unset;
  exporter.GetDimensionTexts(annotation, prefix, suffix, before, after, above, underneath,
                             holeCallout, below);
  const auto set = [&](const KOVAString& text) {
    return text.equals(unset) ? Text() : TextOf(text);
  };
  report.texts = {set(prefix), set(suffix),     set(before),      set(after),
                  set(above),  set(underneath), set(holeCallout), set(below)};
  if (!report.upperText) return;
  report.tolerance = KindOfTolerance(report);
  if (report.tolerance != "limits") return;
  // A limit without a text of its own is not stated.
  if (report.upperText == "") report.upper.reset();
  if (report.lowerText == "") report.lower.reset();
}

}  // namespace

DimensionReport WalkDimension(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  DimensionReport report;
  report.type = EnumText<KOVAPMIDimensionType>(
      [&](auto& type) { return exporter.GetDimensionType(annotation, type); });
  report.mainType = EnumText<KOVAPMIDimensionMainType>(
      [&](auto& type) { return exporter.GetDimensionMainType(annotation, type); });
  report.calloutType = CalloutType(exporter, annotation);
  ReadValues(exporter, annotation, report);
  KOVAPMIArrowSymbol arrow1 = ArrowSymbolNone;
  KOVAPMIArrowSymbol arrow2 = ArrowSymbolNone;
  float a[2];
  float b[2];
  float c[2];
  bool third = false;
  if (exporter.GetDimensionLine(annotation, arrow1, a, arrow2, b, third, c).IsSuccess()) {
    report.line = {{{a[0], a[1]}, {b[0], b[1]}}};
  }
  if (exporter.GetDimensionExtensionLines(annotation, a, b, c).IsSuccess()) {
    report.extensionLines = {{{a[0], a[1]}, {b[0], b[1]}, {c[0], c[1]}}};
  }
  int callouts = 0;
  exporter.GetCalloutAnnotationCount(annotation, callouts);
  for (int i = 0; i < callouts; ++i) {
    KOVAIdentifier callout;
    if (!exporter.GetCalloutAnnotationAt(annotation, i, callout).IsSuccess()) continue;
    CalloutReport& entry = report.callouts.emplace_back();
    entry.id = IdOfObject(exporter, callout);
    entry.name = NameOfObject(exporter, callout);
    entry.calloutType = CalloutType(exporter, callout);
    Number precision;
    ReadValue(exporter, callout, entry.value, precision);
  }
  return report;
}

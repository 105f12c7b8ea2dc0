// What becomes of the time when annotations double: building the index, and walking all of it.
#include <algorithm>
#include <utility>

#include "Measure.h"
#include "Models.h"

namespace {

using models::Placement;

// A size and its half stand side by side.
models::Held held, half;
int heldSize = 0;

// Both models of a step; the half is what the step before measured as a whole.
template <typename Seconds>
void Step(benchmark::State& state, Placement placement, int annotations, Seconds seconds) {
  const auto hold = [placement](models::Held& in, int n) {
    in.Part(std::to_string(placement) + ':' + std::to_string(n),
            [&] { return models::Dense(n, models::kAllKinds, placement); });
  };
  if (annotations != heldSize) std::swap(half, held);
  heldSize = annotations;
  hold(half, annotations / 2);
  hold(held, annotations);
  for (auto _ : state) {
    const double halved = seconds(half);
    measure::Report(state, seconds(held), halved, annotations, annotations / 2.0);
  }
}

double BuildSeconds(models::Held& model) {
  models::Exporter exporter;
  return measure::Time([&] { exporter = models::Index(model.Part()); });
}

// Asks what a writer asks.
class Writer {
 public:
  explicit Writer(KOVAPMIExporter& exporter) : pmi_(exporter) {}

  void Walk() {
    KOVAIdentifier set, view, annotation;
    int views = 0, annotations = 0;
    pmi_.GetAnnotationSet(0, set);
    pmi_.GetAnnotationViewCount(set, views);
    for (int v = 0; v < views; ++v) {
      pmi_.GetAnnotationView(set, v, view);
      float frame[9];
      pmi_.GetViewCoordinateSystem(view, frame);
      pmi_.GetViewAnnotationCount(view, annotations);
      for (int a = 0; a < annotations; ++a) {
        pmi_.GetViewAnnotation(view, a, annotation);
        AskWhatAllHave(annotation);
        AskOfKind(annotation);
      }
    }
  }

 private:
  void AskWhatAllHave(const KOVAIdentifier& annotation) {
    bool hidden = false;
    pmi_.IsAnnotationHidden(annotation, hidden);
    pmi_.GetAnnotationName(annotation, string_);
    KOVAIdentifier text;
    if (pmi_.GetAnnotationTextCount(annotation, count_).IsSuccess()) {
      pmi_.GetAnnotationText(annotation, 0, text);
      pmi_.GetTextString(text, string_);
    }
    KOVAIdentifiers owners;
    pmi_.GetNumberOfEntitiesFromAnnotation(annotation, count_);
    for (int i = 0; i < count_; ++i) pmi_.GetEntityFromAnnotationAt(annotation, i, owners);
    AskPosition(annotation);
    float depth = 0;
    pmi_.GetAnnotationZDepth(annotation, depth);
    KOVAIdentifier leader;
    int leaders = 0;
    pmi_.GetAnnotationLeaderCount(annotation, leaders);
    for (int i = 0; i < leaders; ++i) {
      pmi_.GetAnnotationLeader(annotation, i, leader);
      double point[3];
      pmi_.GetLeaderPointCount(leader, count_);
      for (int end = 0; end < count_; ++end) pmi_.GetLeader3DPoint(leader, end, point);
    }
  }

  void AskPosition(const KOVAIdentifier& annotation) {
    float position[2];
    KOVAPMIOrientation orientation{};
    float angle = 0;
    pmi_.GetAnnotationPositionInView(annotation, position, orientation, angle);
  }

  void AskOfKind(const KOVAIdentifier& annotation) {
    KOVAPMIAnnotationType type{};
    pmi_.GetAnnotationType(annotation, type);
    unsigned fields = 0;
    if (type == AnnotationTypeGeometricTolerance) AskOfTolerance(annotation);
    if (type == AnnotationTypeDimension) AskOfDimension(annotation);
    if (type == AnnotationTypeDatum) pmi_.GetDatumLabel(annotation, string_);
    if (type == AnnotationTypeDatumTarget) pmi_.GetDatumTargetLabel(annotation, string_);
    if (type == AnnotationTypeRoughness) {
      pmi_.GetRoughnessFieldCount(annotation, fields);
      for (unsigned i = 0; i < fields; ++i) pmi_.GetRoughnessFieldAt(annotation, i, string_);
    }
  }

  void AskOfTolerance(const KOVAIdentifier& annotation) {
    KOVAPMIToleranceType type{};
    bool allAround = false;
    pmi_.GetToleranceInfo(annotation, type, allAround);
    int rows = 0;
    pmi_.GetToleranceRowCount(annotation, rows);
    for (int row = 0; row < rows; ++row) {
      KOVAPMIToleranceValueType valueType{};
      double values[4];
      pmi_.GetToleranceRowInfo(annotation, row, valueType, values[0], values[1], values[2],
                               values[3]);
      KOVAIdentifiers modifiers, references;
      pmi_.GetAnnotationToleranceModifiers(annotation, row, modifiers);
      KOVAIdentifier frame;
      if (!pmi_.GetAnnotationAssociatedRefFrame(annotation, row, string_, frame).IsSuccess()) {
        continue;
      }
      pmi_.GetDatumReferences(frame, references);
      for (int i = 0; i < references.count(); ++i) AskOfReference(references.at(i));
    }
  }

  void AskOfReference(const KOVAIdentifier& reference) {
    pmi_.GetDatumReferenceLabel(reference, string_);
    int datums = 0;
    pmi_.GetDatumReferenceDatumCount(reference, datums);
    for (int i = 0; i < datums; ++i) {
      KOVAIdentifier datum, owner;
      KOVAIdentifiers modifiers;
      pmi_.GetDatumAt(reference, i, datum, owner, modifiers);
      pmi_.GetDatumLabel(datum, string_);
    }
  }

  void AskOfDimension(const KOVAIdentifier& annotation) {
    KOVAPMIDimensionType type{};
    KOVAPMIUnit unit{};
    KOVAPMIArrowSymbol arrow{};
    double value = 0, upper = 0, precision = 0;
    bool has = false;
    float points[3][2];
    KOVAString texts[8];
    pmi_.GetDimensionType(annotation, type);
    pmi_.GetDimensionValue(annotation, value, unit, precision);
    pmi_.GetDimensionTolerance(annotation, value, upper, precision, has, texts[0], texts[1]);
    pmi_.GetDimensionTexts(annotation, texts[0], texts[1], texts[2], texts[3], texts[4], texts[5],
                           texts[6], texts[7]);
    pmi_.GetDimensionLine(annotation, arrow, points[0], arrow, points[1], has, points[2]);
    pmi_.GetDimensionExtensionLines(annotation, points[0], points[1], points[2]);
    int callouts = 0;
    pmi_.GetCalloutAnnotationCount(annotation, callouts);
    for (int i = 0; i < callouts; ++i) {
      KOVAIdentifier callout;
      pmi_.GetCalloutAnnotationAt(annotation, i, callout);
      pmi_.GetAnnotationName(callout, string_);
      pmi_.GetDimensionValue(callout, value, unit, precision);
      AskPosition(callout);
    }
  }

  KOVAPMIExporter& pmi_;
  KOVAString string_;
  int count_ = 0;
};

double WalkSeconds(models::Held& model) {
  Writer writer(model.Exporter());
  return measure::Time([&] { writer.Walk(); });
}

}  // namespace

int main(int argc, char** argv) {
  for (const Placement placement : {models::InPlanes, models::InNullView}) {
    const std::string shape = placement == models::InPlanes ? "planes" : "null";
    for (int n = 20000; n <= 1280000; n *= 2) {
      const std::string size = std::to_string(n);
      const int repetitions = std::clamp(960000 / n, 3, 11);
      measure::Register("growth_" + shape + ":" + size, repetitions,
                        [=](auto& state) { Step(state, placement, n, BuildSeconds); });
      if (n > 320000) continue;
      measure::Register("walk:" + shape + ", " + size, repetitions,
                        [=](auto& state) { Step(state, placement, n, WalkSeconds); });
    }
  }
  return measure::Run(argc, argv);
}

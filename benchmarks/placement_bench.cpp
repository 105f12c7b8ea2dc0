// Where annotations stand in their views: a query of a model of many views and of one of few.
#include <algorithm>
#include <random>

#include "Measure.h"
#include "Models.h"

namespace {

using Identifiers = std::vector<KOVAIdentifier>;

KOVAIdentifier Naming(ENTITY& entity) {
  return KOVAIdentifier(&entity, nullptr, nullptr, nullptr, KOVAIdentifierCastHandle(nullptr));
}

constexpr int kFew = 100;
constexpr int kMany = 10000;
constexpr int kCalls = 20000;

// As many annotations as the smaller model has views, spread over the whole model and in no order:
// the larger model's are as warm in the caches as the smaller one's, so that the way to the view is
// compared and not the memory that the annotations take.
Identifiers Asked(const Identifiers& all) {
  Identifiers asked;
  const std::size_t step = std::max<std::size_t>(1, all.size() / kFew);
  for (std::size_t i = 0; i < all.size(); i += step) asked.push_back(all[i]);
  std::shuffle(asked.begin(), asked.end(), std::mt19937(12));
  return asked;
}

// Annotations of every kind, each in a view of its own.
struct Drawing {
  explicit Drawing(int views)
      : part(models::Dense(views, models::kAllKinds, models::InPlanes)),
        exporter(models::Index(*part)) {
    KOVAIdentifier set, view, annotation, callout;
    KOVAPMIAnnotationType type{};
    exporter->GetAnnotationSet(0, set);
    for (int i = 0; i < views; ++i) {
      exporter->GetAnnotationView(set, i, view);
      exporter->GetViewAnnotation(view, 0, annotation);
      annotations.push_back(annotation);
      exporter->GetAnnotationType(annotation, type);
      if (type != AnnotationTypeDimension) continue;
      dimensions.push_back(annotation);
      exporter->GetCalloutAnnotationAt(annotation, 0, callout);
      callouts.push_back(callout);
    }
    for (Identifiers* each : {&annotations, &dimensions, &callouts}) *each = Asked(*each);
    // Made after the index, and so in no view.
    auto& late = part->AddDimension({&part->Face()}, dim_linear, dim_sub_width, 40);
    part->Place(late, {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
    standin::Edit(late).line = {{1, 2, 3}, {41, 2, 3}};
    inNone.push_back(Naming(late));
  }

  std::unique_ptr<standin::Part> part;
  models::Exporter exporter;
  Identifiers annotations, dimensions, callouts, inNone;
};

using Query = KOVAResult (*)(KOVAPMIExporter&, const KOVAIdentifier&);

KOVAResult AskPosition(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  float position[2];
  KOVAPMIOrientation orientation{};
  float angle = 0;
  return exporter.GetAnnotationPositionInView(annotation, position, orientation, angle);
}
KOVAResult AskDepth(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
  float depth = 0;
  return exporter.GetAnnotationZDepth(annotation, depth);
}
KOVAResult AskLine(KOVAPMIExporter& exporter, const KOVAIdentifier& dimension) {
  KOVAPMIArrowSymbol arrow{};
  float points[3][2];
  bool third = false;
  return exporter.GetDimensionLine(dimension, arrow, points[0], arrow, points[1], third, points[2]);
}

Drawing& DrawingOf(int views) {
  static Drawing few(kFew), many(kMany);
  return views == kFew ? few : many;
}

// 0 when the first answer is not the expected one.
double Seconds(int views, Identifiers Drawing::*of, Query ask, bool succeeds) {
  Drawing& drawing = DrawingOf(views);
  const Identifiers& identifiers = drawing.*of;
  if (ask(*drawing.exporter, identifiers.front()).IsSuccess() != succeeds) return 0;
  return measure::Time([&] {
    auto next = identifiers.begin();
    for (int i = 0; i < kCalls; ++i) {
      benchmark::DoNotOptimize(ask(*drawing.exporter, *next));
      if (++next == identifiers.end()) next = identifiers.begin();
    }
  });
}

void Register(const char* name, Identifiers Drawing::*of, Query ask, bool succeeds = true) {
  measure::Register(std::string("placement:") + name, 21, [=](benchmark::State& state) {
    measure::Compare(
        state, kCalls, [&] { return Seconds(kMany, of, ask, succeeds); },
        [&] { return Seconds(kFew, of, ask, succeeds); });
  });
}

}  // namespace

int main(int argc, char** argv) {
  Register("GetAnnotationPositionInView", &Drawing::annotations, AskPosition);
  Register("GetAnnotationPositionInView, of a callout", &Drawing::callouts, AskPosition);
  Register("GetAnnotationPositionInView, in no view", &Drawing::inNone, AskPosition, false);
  Register("GetAnnotationZDepth", &Drawing::annotations, AskDepth);
  Register("GetAnnotationZDepth, in no view", &Drawing::inNone, AskDepth, false);
  Register("GetDimensionLine", &Drawing::dimensions, AskLine);
  Register("GetDimensionLine, in no view", &Drawing::inNone, AskLine);
  return measure::Run(argc, argv);
}

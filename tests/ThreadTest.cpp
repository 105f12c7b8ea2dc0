// Separate exporters on separate documents share nothing.
#include <thread>

#include "KOVAOrvoPMIExporterFactory.h"
#include "Matchers.h"

namespace {

// Builds a model, scans it and asks for everything a few times over; how many answers were wrong.
int WrongAnswersOf(int thread) {
  int wrong = 0;
  for (int round = 0; round < 20; ++round) {
    standin::Part part;
    const int faces = 5 + thread;
    for (int i = 0; i < faces; ++i) {
      FACE& face = part.Face(L"face");
      part.Place(part.AddText(face, L"note"), {1.0 * i, 2, 3}, {1, 0, 0}, {0, 0, 1});
      auto& datum = part.AddDatum(face, L"A");
      part.AddDatumTarget(face, L"A1", &datum);
      part.AddReference(*standin::Edit(part.AddGeometricTolerance(face, tol_position, 0.1)).rows[0],
                        L"A", {&standin::DatumOf(datum)});
    }
    KOVAPMIExporter* made = nullptr;
    if (KOVACreateOrvoPMIExporter(&part.GetDocument(), &made) != 0) return 1;
    const std::unique_ptr<KOVAPMIExporter> exporter(made);
    const KOVAIdentifier set;
    int views = 0;
    exporter->GetAnnotationViewCount(set, views);
    wrong += views != faces + 1;
    for (int v = 0; v < views; ++v) {
      KOVAIdentifier view;
      exporter->GetAnnotationView(set, v, view);
      int annotations = 0;
      exporter->GetViewAnnotationCount(view, annotations);
      for (int a = 0; a < annotations; ++a) {
        KOVAIdentifier annotation;
        KOVAString name = SentinelString();
        KOVAIdentifiers entities;
        float position[2] = {-1, -1};
        KOVAPMIOrientation orientation = OrientationUnknown;
        float angle = 0;
        wrong += !exporter->GetViewAnnotation(view, a, annotation).IsSuccess();
        exporter->GetAnnotationName(annotation, name);
        wrong += !exporter->GetEntityFromAnnotationAt(annotation, 0, entities).IsSuccess();
        exporter->GetAnnotationPositionInView(annotation, position, orientation, angle);
        wrong += view.GetNativeObject() != nullptr && position[0] != 0;
        unsigned int first = 0;
        KOVAIdentifier target;
        exporter->GetDatumTargetAt(annotation, first, target);
      }
    }
  }
  return wrong;
}

TEST(Thread, SeparateExportersAnswerRightFromSeveralThreadsAtOnce) {
  const long alive = standin::Count().liveEntities;
  std::array<int, 4> wrong{-1, -1, -1, -1};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&wrong, i] { wrong[static_cast<std::size_t>(i)] = WrongAnswersOf(i); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(wrong, testing::Each(0));
  EXPECT_EQ(standin::Count().liveEntities, alive);
}

}  // namespace

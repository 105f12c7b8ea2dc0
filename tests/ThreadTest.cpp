// Separate exporters on separate documents share nothing.
#include <thread>

#include "EveryKind.h"
#include "ReferenceIndex.h"

namespace {

// Builds a model, scans it and asks about everything a few times over; how many answers were wrong.
int WrongAnswers() {
  int wrong = 0;
  for (int round = 0; round < 20; ++round) {
    EveryKind model;
    const auto exporter = Export(model.part);
    const Placement placement(*exporter);
    for (ENTITY* entity : model.part.GetEntities()) {
      wrong += !(placement.Answered(Naming(entity)) == placement.Walked(entity));
      unsigned first = 0;
      KOVAIdentifier target;
      exporter->GetDatumTargetAt(Naming(entity), first, target);
      KOVAString name = SentinelString();
      exporter->GetAnnotationName(Naming(entity), name);
    }
    for (const ENTITY* annotation : Annotations(*exporter)) {
      KOVAPMIAnnotationType type = AnnotationTypeUnknown;
      exporter->GetAnnotationType(Naming(const_cast<ENTITY*>(annotation)), type);
      wrong += type == AnnotationTypeUnknown;
    }
  }
  return wrong;
}

TEST(Thread, SeparateExportersAnswerRightFromSeveralThreadsAtOnce) {
  const long alive = standin::Count().liveEntities;
  std::array<int, 4> wrong{-1, -1, -1, -1};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&wrong, i] { wrong[static_cast<std::size_t>(i)] = WrongAnswers(); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(wrong, testing::Each(0));
  EXPECT_EQ(standin::Count().liveEntities, alive);
}

}  // namespace

#include <algorithm>
#include <functional>
#include <tuple>

#include "EveryKind.h"
#include "Matchers.h"
#include "orvo_kernel/internals.h"

namespace {

using standin::Fault;
using standin::Part;

// --- Factory -------------------------------------------------------------------------------------

TEST(Factory, MakesNothingWithoutADocument) {
  const auto before = Balance();
  KOVAPMIExporter* exporter = reinterpret_cast<KOVAPMIExporter*>(&exporter);
  EXPECT_EQ(KOVACreateOrvoPMIExporter(nullptr, &exporter), kFailure);
  EXPECT_EQ(exporter, nullptr);
  EXPECT_EQ(Balance(), before);
}

// --- Initialisation ------------------------------------------------------------------------------

TEST(Initialize, SucceedsOnceADocumentIsThereWhateverItsStepsAnswer) {
  // What each adds to the model before gives no annotation, and the capture and the members of the
  // groups fail.
  const std::function<void(Part&)> kSteps[] = {
      [](Part& part) { part.Face(); }, [](Part& part) { part.AddCapture({}); },
      [](Part& part) { part.Group(3, {&part.Face()}); },
      [](Part& part) { part.Group(6, {&part.Face()}); },
      [](Part& part) { part.AddText(part.Face(), L"note"); }};
  Part all;
  const auto expectSuccessOnce = [](Part& part) {
    part.GetDocument().SetAvailable(false);
    const auto exporter = Export(part);
    EXPECT_THAT(exporter->Initialize(), FailsWith(kFailure));
    part.GetDocument().SetAvailable(true);
    EXPECT_THAT(exporter->Initialize(), IsSuccess());
    EXPECT_THAT(exporter->Initialize(), FailsWith(kFailure));
  };
  for (const auto& add : kSteps) {
    Part alone;
    add(alone);
    expectSuccessOnce(alone);
    add(all);
    expectSuccessOnce(all);
  }
}

// --- The annotation set --------------------------------------------------------------------------

TEST(AnnotationSet, IsOneAndEmptyUnderEveryIndexAndAbsentWithoutPmi) {
  Part bare, captures, annotations;
  bare.Face();
  captures.AddCapture({});
  annotations.AddText(annotations.Face(), L"note");
  for (Part* part : {&bare, &captures, &annotations}) {
    const bool absent = part == &bare;
    const auto exporter = Export(*part);
    EXPECT_THAT(exporter->PreProcess(), HasCode(absent ? 2 : 0));
    EXPECT_THAT(exporter->PreProcess(), IsSuccess());
    EXPECT_EQ(CountFrom(*exporter, &KOVAPMIExporter::GetAnnotationSetCount), Answer(0, !absent));
    EXPECT_EQ(Views(*exporter).size(), part == &annotations ? 1u : 0u);
    for (const int index : {0, 5, -1}) {
      KOVAIdentifier set = SentinelIdentifier();
      EXPECT_THAT(exporter->GetAnnotationSet(index, set), IsSuccess());
      EXPECT_EQ(set.IsValid(), absent) << index;
    }
  }
}

// --- Attribute exporter --------------------------------------------------------------------------

TEST(AttributeExporter, IsOneThatTellsTheCurrentStateOfAnyEntity) {
  Part part;
  FACE &plain = part.Face(), &current = part.Face(), &suppressed = part.Face();
  part.Integer(current, "current", 1);
  part.Integer(suppressed, "current", 0);
  const auto exporter = Export(part);
  KOVAAttributeExporter *first = nullptr, *second = nullptr;
  EXPECT_THAT(exporter->GetAttributeExporter(first), IsSuccess());
  EXPECT_THAT(exporter->GetAttributeExporter(second), IsSuccess());
  EXPECT_EQ(first, second);
  auto& own = dynamic_cast<KOVAOrvoPMIAttributeExporter&>(*first);
  KOVAOrvoPMIAttributeExporter attributes(own);
  EXPECT_EQ(&(attributes = own), &attributes);
  const std::tuple<ENTITY*, bool, long> kStates[] = {
      {&plain, true, 0}, {&current, true, 0}, {&suppressed, false, 0}, {nullptr, false, kFailure}};
  for (const auto& [entity, expected, code] : kStates) {
    bool state = !expected;
    EXPECT_THAT(attributes.GetCurrentState(Naming(entity), state), HasCode(code));
    EXPECT_EQ(state, expected);
  }
}

// --- Destruction ---------------------------------------------------------------------------------

TEST(Destruction, DeletesTheViewPlanesInOneCallAndNothingElse) {
  EveryKind model;
  const auto before = Balance();
  const long calls = standin::Count().deletionCalls;
  auto exporter = Export(model.part);
  Entities planes = Views(*exporter);
  planes.erase(std::remove(planes.begin(), planes.end(), nullptr), planes.end());
  EXPECT_EQ(standin::Count().liveEntities, before[0] + static_cast<long>(planes.size()));
  for (const ENTITY* plane : planes) EXPECT_EQ(is_PLANE(plane), 1);
  EXPECT_GT(planes.size(), 3u);
  EXPECT_EQ(standin::Count().deletionCalls, calls);
  exporter.reset();
  EXPECT_EQ(standin::Count().deletionCalls, calls + 1);
  for (const ENTITY* plane : planes) EXPECT_FALSE(kernel_state::is_live(plane));
  EXPECT_EQ(Balance(), before);
}

TEST(Destruction, MakesNoDeletionCallWithoutPlanesAndIgnoresAFailedOne) {
  Part part;
  auto& text = part.AddText(part.Face(), L"note");
  const long calls = standin::Count().deletionCalls;
  Export(part).reset();
  EXPECT_EQ(standin::Count().deletionCalls, calls);
  part.Place(text, {}, {1, 0, 0}, {0, 0, 1});
  auto exporter = Export(part);
  const ENTITY* plane = Views(*exporter).at(0);
  const Fault fault = Fault::KernelCall(1, 7);
  exporter.reset();
  EXPECT_TRUE(fault.HasFired());
  EXPECT_TRUE(kernel_state::is_live(plane));
  delete plane;
}

}  // namespace

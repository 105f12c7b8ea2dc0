// Every point at which memory or the kernel can fail, one after the other.
#include <algorithm>
#include <new>

#include "AllocationCounter.h"
#include "EveryKind.h"

namespace {

std::unique_ptr<KOVAOrvoPMIExporter> Made(EveryKind& model) {
  return std::make_unique<KOVAOrvoPMIExporter>(model.part.GetDocument());
}

// Lets the n-th allocation of `work` fail for n = 1, 2, 3 … until none does; how many there were.
// Each raises, unless it meets the destructor, and leaves the process and the model as they were.
template <typename MakeFault, typename Work>
long Sweep(EveryKind& model, MakeFault makeFault, Work work) {
  const auto before = Balance();
  const std::string print = FingerprintOf(model.part);
  for (long n = 1;; ++n) {
    bool fired = false, raised = false;
    {
      const auto fault = makeFault(n);
      try {
        work();
      } catch (const std::bad_alloc&) {
        raised = true;
      }
      fired = fault.HasFired();
    }
    EXPECT_LE(raised, fired) << n;
    EXPECT_EQ(Balance(), before) << n;
    EXPECT_EQ(FingerprintOf(model.part), print) << n;
    if (!fired || testing::Test::HasFailure()) return n - 1;
  }
}
constexpr auto kAllocation = [](long n) { return FailingAllocation(n); };

TEST(FaultSweep, ConstructionThatRunsOutOfMemoryAnywhereLeavesNothingBehind) {
  for (const bool standardHash : {false, true}) {
    const standin::UseStdHash form(standardHash);
    EveryKind model;
    EXPECT_GT(Sweep(model, kAllocation, [&] { Made(model); }), 50);
    const auto tracked = [](long n) { return standin::Fault::TrackedAllocation(n); };
    EXPECT_EQ(Sweep(model, tracked, [&] { Made(model); }), 6);  // a plane each that is placed
  }
}

TEST(FaultSweep, FactoryGivesItsFailureCodeWhenThereIsNoMemoryForTheObject) {
  EveryKind model;
  KOVAPMIExporter* exporter = reinterpret_cast<KOVAPMIExporter*>(&model);
  const FailingAllocation fault(1);
  EXPECT_EQ(KOVACreateOrvoPMIExporter(&model.part.GetDocument(), &exporter), kFailure);
  EXPECT_EQ(exporter, nullptr);
}

TEST(FaultSweep, LatePreProcessThatRunsOutOfMemoryKeepsTheExporterFitToBeDestroyed) {
  EveryKind model;
  const long points = Sweep(model, kAllocation, [&] {
    model.part.GetDocument().SetAvailable(false);
    const auto exporter = Made(model);
    model.part.GetDocument().SetAvailable(true);
    exporter->PreProcess();
  });
  EXPECT_GT(points, 50);
}

// Asks for everything whose answer may need memory.
void AskAll(KOVAOrvoPMIExporter& e, const KOVAIdentifier& id) {
  KOVAString s;
  KOVAIdentifier frame, datum, owner;
  KOVAIdentifiers list, references;
  double d[3];
  float f[3];
  bool b;
  unsigned first = 0;
  KOVAPMICameraType camera;
  KOVAPMIOrientation orientation;
  e.GetAnnotationName(id, s);
  e.GetPID(id, s);
  e.GetTextString(id, s);
  e.GetEntityFromAnnotationAt(id, 0, list);
  e.GetAnnotationToleranceModifiers(id, 0, list);
  if (e.GetAnnotationAssociatedRefFrame(id, 0, s, frame).IsSuccess()) {
    e.GetDatumReferences(frame, references);
    e.GetDatumAt(references.at(0), 0, datum, owner, list);
    e.GetDatumReferenceLabel(references.at(0), s);
  }
  e.GetBeforeToleranceNote(id, s);
  e.GetDimensionTolerance(id, d[0], d[0], d[0], b, s, s);
  e.GetDimensionTexts(id, s, s, s, s, s, s, s, s);
  e.GetCaptureCameraData(id, s, camera, d, d, d, d, d[0], d[0]);
  e.GetCaptureHiddenText(id, s);
  e.GetDatumTargetAt(id, first, datum);
  e.GetAnnotationPositionInView(id, f, orientation, f[2]);
  e.GetRoughnessFieldAt(id, 0, s);
}

TEST(FaultSweep, QueriesThatRunOutOfMemoryRaiseBadAllocAndAnswerTheNextTime) {
  EveryKind model;
  const auto exporter = Made(model);
  const Entities views = Views(*exporter), annotations = Annotations(*exporter);
  long points = 0;
  for (ENTITY* entity : model.part.GetEntities()) {
    // Inner parts are taken for what queries expect; only annotations and captures are asked about.
    if (is_KOVAPMI_DIMENSION(entity) + is_KOVAPMI_CAPTURE(entity) + is_ATTRIB(entity) == 0)
      continue;
    points += Sweep(model, kAllocation, [&] { AskAll(*exporter, Naming(entity)); });
  }
  EXPECT_GT(points, 15);
  EXPECT_EQ(Views(*exporter), views);
  EXPECT_EQ(Annotations(*exporter), annotations);
}

// A failed call skips its own step; everything that a model without that step would give stays.
TEST(FaultSweep, KernelCallThatFailsCostsItsOwnStepAlone) {
  EveryKind model;
  const standin::Fault count = standin::Fault::None();
  const auto whole = Made(model);
  const long calls = count.Calls();
  const Entities all = Annotations(*whole);
  EXPECT_GT(calls, 30);
  for (long n = 1; n <= calls; ++n) {
    const auto exporter = [&] {
      const standin::Fault fault = standin::Fault::KernelCall(n, 7);
      auto made = Made(model);
      EXPECT_TRUE(fault.HasFired()) << n;
      return made;
    }();
    unsigned captures = 0;
    EXPECT_THAT(exporter->GetCaptureCount(KOVAIdentifier(), captures), IsSuccess());
    EXPECT_EQ(captures, 1u) << n;
    // What is there is as in the whole index, in its order.
    auto at = all.begin();
    for (const ENTITY* annotation : Annotations(*exporter))
      at = std::find(at, all.end(), annotation);
    EXPECT_NE(at, all.end()) << "order changed by failing call " << n;
  }
}

}  // namespace

// Every point at which memory or the kernel can fail, one after the other.
#include <functional>
#include <new>

#include "AllocationCounter.h"
#include "EveryKind.h"
#include "KOVAOrvoPMIExporterFactory.h"
#include "framework_base/KOVAExceptions.h"

namespace {

// What the index holds, by native object: planes are told by their place in the order of views.
struct IndexContent {
  std::vector<std::pair<bool, std::vector<void*>>> views;  // has a plane; annotations
  std::vector<std::pair<void*, std::vector<void*>>> owners;
  unsigned int captures = 0;
};

IndexContent ContentOf(KOVAPMIExporter& exporter) {
  IndexContent content;
  KOVAIdentifier set;
  int views = 0;
  exporter.GetAnnotationSet(0, set);
  exporter.GetAnnotationViewCount(set, views);
  for (int v = 0; v < views; ++v) {
    KOVAIdentifier view;
    exporter.GetAnnotationView(set, v, view);
    auto& entry = content.views.emplace_back(view.GetNativeObject() != nullptr, 0);
    int annotations = 0;
    exporter.GetViewAnnotationCount(view, annotations);
    for (int a = 0; a < annotations; ++a) {
      KOVAIdentifier annotation;
      exporter.GetViewAnnotation(view, a, annotation);
      entry.second.push_back(annotation.GetNativeObject());
      KOVAIdentifiers entities;
      for (int e = 0; exporter.GetEntityFromAnnotationAt(annotation, e, entities).IsSuccess();) ++e;
      auto& owners = content.owners.emplace_back(annotation.GetNativeObject(), 0).second;
      for (int e = 0; e < entities.count(); ++e) {
        owners.push_back(entities.at(e).GetNativeObject());
      }
    }
  }
  exporter.GetCaptureCount(set, content.captures);
  return content;
}

// The process and the model are as they were, and a second exporter on the document works.
class Unharmed {
 public:
  explicit Unharmed(EveryKind& model)
      : model_(model), before_(standin::Count()), print_(FingerprintOf(model.part)) {}
  void Check() {
    const standin::Counters after = standin::Count();
    EXPECT_EQ(after.liveEntities, before_.liveEntities);
    EXPECT_EQ(after.trackedBytes, before_.trackedBytes);
    EXPECT_EQ(after.openBoards, before_.openBoards);
    EXPECT_EQ(after.errorDepth, before_.errorDepth);
    EXPECT_EQ(after.errorMarkState, before_.errorMarkState);
    EXPECT_EQ(after.logging, before_.logging);
    EXPECT_EQ(after.deletionsOfDead, before_.deletionsOfDead);
    EXPECT_EQ(FingerprintOf(model_.part), print_);
  }

 private:
  EveryKind& model_;
  standin::Counters before_;
  std::string print_;
};

std::unique_ptr<KOVAOrvoPMIExporter> Made(EveryKind& model) {
  return std::make_unique<KOVAOrvoPMIExporter>(model.part.GetDocument());
}

// Lets the n-th allocation of `work` fail for n = 1, 2, 3 … until none does; how many there were.
long SweepAllocations(const std::function<void()>& work) {
  for (long n = 1;; ++n) {
    bool fired = false;
    try {
      const FailingAllocation fault(n);
      try {
        work();
      } catch (...) {
        fired = fault.HasFired();
        throw;
      }
      fired = fault.HasFired();
      if (!fired) return n - 1;
      ADD_FAILURE() << "allocation " << n << " failed and nothing was raised";
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(fired) << "bad_alloc without a failed allocation at " << n;
    }
    if (testing::Test::HasFailure()) return n;
  }
}

TEST(FaultSweep, ConstructionThatRunsOutOfMemoryAnywhereLeavesNothingBehind) {
  for (const bool standardHash : {false, true}) {
    const standin::UseStdHash form(standardHash);
    EveryKind model;
    Unharmed unharmed(model);
    const long points = SweepAllocations([&] {
      try {
        Made(model);
      } catch (...) {
        unharmed.Check();
        throw;
      }
    });
    unharmed.Check();
    EXPECT_GT(points, 50);
    RecordProperty(standardHash ? "pointsStandard" : "pointsTable", static_cast<int>(points));
    std::printf("%ld allocations failed in construction\n", points);
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
  Unharmed unharmed(model);
  const long points = SweepAllocations([&] {
    model.part.GetDocument().SetAvailable(false);
    const auto exporter = Made(model);
    model.part.GetDocument().SetAvailable(true);
    exporter->PreProcess();
  });
  EXPECT_GT(points, 50);
  unharmed.Check();
}

TEST(FaultSweep, QueriesThatRunOutOfMemoryRaiseBadAllocAndAnswerTheNextTime) {
  EveryKind model;
  Unharmed unharmed(model);
  const auto exporter = Made(model);
  const IndexContent whole = ContentOf(*exporter);
  using Query = std::function<void(const KOVAIdentifier&)>;
  KOVAOrvoPMIExporter& e = *exporter;
  const std::vector<Query> queries{
      [&](const auto& id) {
        KOVAString s;
        e.GetAnnotationName(id, s);
      },
      [&](const auto& id) {
        KOVAString s;
        e.GetPID(id, s);
      },
      [&](const auto& id) {
        KOVAString s;
        e.GetTextString(id, s);
      },
      [&](const auto& id) {
        KOVAIdentifiers l;
        e.GetEntityFromAnnotationAt(id, 0, l);
      },
      [&](const auto& id) {
        KOVAIdentifiers l;
        e.GetAnnotationToleranceModifiers(id, 0, l);
      },
      [&](const auto& id) {
        KOVAString s;
        KOVAIdentifier frame;
        if (!e.GetAnnotationAssociatedRefFrame(id, 0, s, frame).IsSuccess()) return;
        KOVAIdentifiers references;
        e.GetDatumReferences(frame, references);
        KOVAIdentifiers modifiers;
        KOVAIdentifier datum;
        KOVAIdentifier owner;
        e.GetDatumAt(references.at(0), 0, datum, owner, modifiers);
        e.GetDatumReferenceLabel(references.at(0), s);
      },
      [&](const auto& id) {
        KOVAString s;
        e.GetBeforeToleranceNote(id, s);
      },
      [&](const auto& id) {
        double d;
        bool b;
        KOVAString s;
        e.GetDimensionTolerance(id, d, d, d, b, s, s);
        e.GetDimensionTexts(id, s, s, s, s, s, s, s, s);
      },
      [&](const auto& id) {
        KOVAString s;
        KOVAPMICameraType type;
        double d[3];
        e.GetCaptureCameraData(id, s, type, d, d, d, d, d[0], d[0]);
        e.GetCaptureHiddenText(id, s);
      },
      [&](const auto& id) {
        unsigned int first = 0;
        KOVAIdentifier target;
        e.GetDatumTargetAt(id, first, target);
        float p[2];
        KOVAPMIOrientation orientation;
        e.GetAnnotationPositionInView(id, p, orientation, p[0]);
      },
      [&](const auto& id) {
        KOVAString s;
        e.GetRoughnessFieldAt(id, 0, s);
      },
      [&](const auto& id) {
        int count;
        e.GetAnnotationLeaderCount(id, count);
      }};
  long points = 0;
  for (const ENTITY* entity : model.part.GetEntities()) {
    const KOVAIdentifier id = Naming(const_cast<ENTITY*>(entity));
    // Inner parts take any object for what they expect; only annotations and captures are asked.
    if (is_KOVAPMI_DIMENSION(entity) == 0 && is_KOVAPMI_CAPTURE(entity) == 0 &&
        is_ATTRIB(entity) == 0) {
      continue;
    }
    for (const Query& query : queries) points += SweepAllocations([&] { query(id); });
  }
  EXPECT_GT(points, 20);
  std::printf("%ld allocations failed in queries\n", points);
  const IndexContent after = ContentOf(*exporter);
  EXPECT_EQ(after.views, whole.views);
  EXPECT_EQ(after.captures, whole.captures);
}

TEST(FaultSweep, TrackedAllocationThatYieldsNothingIsBadAllocAndLeavesNothingBehind) {
  EveryKind model;
  Unharmed unharmed(model);
  long n = 1;
  for (;; ++n) {
    const standin::Fault fault = standin::Fault::TrackedAllocation(n);
    try {
      Made(model);
      ASSERT_FALSE(fault.HasFired());
      break;
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(fault.HasFired());
    }
    unharmed.Check();
  }
  EXPECT_EQ(n - 1, 6);  // one plane an annotation that is placed
}

// A failed call skips its own step; everything that a model without that step would give stays.
TEST(FaultSweep, KernelCallThatFailsCostsItsOwnStepAlone) {
  EveryKind model;
  Unharmed unharmed(model);
  const auto whole = Made(model);
  const IndexContent content = ContentOf(*whole);
  long calls = 0;
  {
    const standin::Fault count = standin::Fault::None();
    Made(model);
    calls = count.Calls();
  }
  EXPECT_GT(calls, 30);
  // The last call is the deletion of the planes, when an exporter goes.
  for (long n = 1; n < calls; ++n) {
    const auto exporter = [&] {
      const standin::Fault fault = standin::Fault::KernelCall(n, 77);
      auto made = Made(model);
      EXPECT_TRUE(fault.HasFired()) << n;
      return made;
    }();
    const IndexContent partial = ContentOf(*exporter);
    EXPECT_EQ(partial.captures, content.captures) << n;
    // What is there is as in the whole index, in its order.
    std::size_t at = 0;
    for (const auto& owners : partial.owners) {
      while (at < content.owners.size() && content.owners[at].first != owners.first) ++at;
      if (at == content.owners.size()) break;
    }
    EXPECT_LT(at, content.owners.size()) << "order changed by failing call " << n;
    EXPECT_LE(partial.owners.size(), content.owners.size());
  }
  std::printf("%ld kernel calls failed\n", calls - 1);
}

}  // namespace

// Every point at which memory can run out while an index is built and given back, one after the
// other.
#include <algorithm>
#include <new>

#include "AllocationCounter.h"
#include "EveryKind.h"
#include "ReferenceIndex.h"

namespace {

std::unique_ptr<KOVAOrvoPMIExporter> Made(EveryKind& model) {
  return std::make_unique<KOVAOrvoPMIExporter>(model.part.GetDocument());
}

TEST(Factory, GivesItsFailureCodeWhenThereIsNoMemoryForTheObject) {
  EveryKind model;
  KOVAPMIExporter* exporter = reinterpret_cast<KOVAPMIExporter*>(&model);
  const FailingAllocation fault(1);
  EXPECT_EQ(KOVACreateOrvoPMIExporter(&model.part.GetDocument(), &exporter), kFailure);
  EXPECT_EQ(exporter, nullptr);
}

class FaultSweep : public ::testing::TestWithParam<bool> {
 protected:
  standin::UseStdHash form_{GetParam()};
  EveryKind model_;
};
INSTANTIATE_TEST_SUITE_P(BothForms, FaultSweep, ::testing::Bool(),
                         [](const auto& form) { return form.param ? "Standard" : "Table"; });

// Each failed allocation raises in the construction, and none in the destruction. All leave the
// process and the model as they were, but for the planes that nothing can list for deletion while
// every allocation fails.
TEST_P(FaultSweep, OfConstructionAndDestructionLeavesNothingButPlanesThatNoMemoryCouldList) {
  const std::string print = FingerprintOf(model_.part);
  for (const bool forGood : {false, true}) {
    long mostLeft = 0;
    bool fired = true;
    for (long n = 1; fired; ++n) {
      auto expected = Balance();
      bool ignored = false;
      {
        const FailingAllocation fault(n, forGood);
        try {
          const auto exporter = Made(model_);
          ignored = fault.HasFired();
        } catch (const std::bad_alloc&) {
        }
        fired = fault.HasFired();
      }
      const long left = Balance()[0] - expected[0];
      mostLeft = std::max(left, mostLeft);
      expected[0] += left;
      expected[1] += left * static_cast<long>(sizeof(PLANE));
      EXPECT_FALSE(ignored);
      EXPECT_TRUE(left == 0 || fired);
      EXPECT_EQ(Balance(), expected);
      EXPECT_EQ(FingerprintOf(model_.part), print);
      ASSERT_FALSE(HasFailure()) << n << forGood;
    }
    EXPECT_EQ(mostLeft > 0, forGood && kSharedLibrariesToo);
  }
}

// What an index answers when it was built up to a point only: less than the whole, and no two
// answers that contradict each other.
TEST_P(FaultSweep, OfALatePreProcessLeavesAnIndexThatAgreesWithItself) {
  const auto whole = Made(model_);
  const Entities wholeViews = Views(*whole);
  bool fired = true;
  for (long n = 1; fired; ++n) {
    SCOPED_TRACE(n);
    const auto before = Balance();
    model_.part.GetDocument().SetAvailable(false);
    auto exporter = Made(model_);
    model_.part.GetDocument().SetAvailable(true);
    {
      const FailingAllocation fault(n);
      bool ignored = false;
      try {
        exporter->PreProcess();
        ignored = fault.HasFired();
      } catch (const std::bad_alloc&) {
      }
      fired = fault.HasFired();
      ASSERT_FALSE(ignored);
    }
    const Entities views = Views(*exporter);
    EXPECT_EQ(ExporterInsides::Views(*exporter).Count(), static_cast<int>(views.size()));
    for (std::size_t i = 0; i < views.size(); ++i) {
      const Entities part = Annotations(*exporter, views[i]);
      const Entities all = Annotations(*whole, wholeViews.at(i));
      EXPECT_TRUE(!part.empty() && part.size() <= all.size());
      EXPECT_TRUE(std::equal(part.begin(), part.end(), all.begin()));
    }
    for (ENTITY* entity : model_.part.GetEntities()) {
      const Placement placement(*exporter);
      EXPECT_EQ(placement.Answered(Naming(entity)), placement.Walked(entity));
    }
    exporter.reset();
    ASSERT_EQ(Balance(), before);
    ASSERT_FALSE(HasFailure());
  }
}

}  // namespace

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Matchers.h"
#include "framework_base/KOVADynamicArray.h"
#include "orvo_kernel/api.h"
#include "orvo_kernel/errors.h"
#include "orvo_kernel/internals.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

namespace {

using standin::Fault;

// --- Framework -----------------------------------------------------------------------------------

TEST(FrameworkIdentifier, ComparesNamesByContentOnlyWhereBothHaveNoObject) {
  standin::Part part;
  KOVARepresentation* const rep = part.GetDocument().GetBRep();
  const std::string copy = "type";  // equal by content, not by address
  int object = 0;
  const auto make = [](void* native, const char* type, KOVARepresentation* representation,
                       const char* nativeType) {
    return KOVAIdentifier(native, type, representation, nativeType,
                          KOVAIdentifierCastHandle(nullptr));
  };
  const KOVAIdentifier named = make(&object, "type", rep, "n");
  const KOVAIdentifier empty = make(nullptr, "type", rep, "n");
  EXPECT_TRUE(named == make(&object, nullptr, nullptr, "m"));
  EXPECT_TRUE(empty == make(nullptr, copy.c_str(), rep, "n"));
  for (const KOVAIdentifier& other :
       {named, make(nullptr, nullptr, rep, "n"), make(nullptr, "type", nullptr, "n"),
        make(nullptr, "type", rep, "m"), KOVAIdentifier()}) {
    EXPECT_FALSE(other == empty);
    EXPECT_FALSE(empty == other);
  }
  EXPECT_FALSE(KOVAIdentifier().IsValid());
  for (const KOVAIdentifier& one :
       {make(&object, nullptr, nullptr, nullptr), make(nullptr, "type", nullptr, nullptr),
        make(nullptr, nullptr, rep, nullptr), make(nullptr, nullptr, nullptr, "n")}) {
    EXPECT_TRUE(one.IsValid());
  }
}

TEST(FrameworkArray, EndsEveryElementOnceThroughGrowthReleaseAndDestruction) {
  const auto counted = std::make_shared<int>();  // by its owners
  {
    KOVADynamicArray<std::shared_ptr<int>> array(2), other(0);
    for (int i = 0; i < 100; ++i) array.Add(counted);
    EXPECT_EQ(counted.use_count(), 101);
    EXPECT_EQ(array[99], counted);
    array.Swap(other);
    EXPECT_EQ(array.Count(), 0);
    other.ReleaseElements();
    EXPECT_EQ(other.Count(), 0);
    EXPECT_EQ(counted.use_count(), 1);
    for (int i = 0; i < 5; ++i) other.Add(counted);
  }
  EXPECT_EQ(counted.use_count(), 1);
}

// --- Kernel entities -----------------------------------------------------------------------------

TEST(KernelList, KeepsOrderAndTurnsAwayWhatItHoldsUnlessToldOtherwise) {
  standin::Part part;
  std::vector<ENTITY*> made;
  ENTITY_LIST list;
  for (int i = 0; i < 40; ++i) {  // past the length at which it starts to keep an index
    made.push_back(&part.Make<VERTEX>());
    EXPECT_EQ(list.add(made.back()), i);
    EXPECT_EQ(list.add(made[0]), 0);
  }
  EXPECT_EQ(list.add(nullptr), -1);
  for (int i = 0; i < 40; ++i) EXPECT_EQ(list.add(made[3], false), 40 + i);
  EXPECT_EQ(list.lookup(made[3]), 3);
  EXPECT_EQ(list[80], nullptr);
  EXPECT_EQ(list[-1], nullptr);
}

TEST(KernelList, RemovedEntitiesLeaveAnEmptyPlaceThatIterationSkips) {
  standin::Part part;
  ENTITY* made[] = {&part.Make<VERTEX>(), &part.Make<VERTEX>(), &part.Make<VERTEX>()};
  ENTITY_LIST list;
  for (ENTITY* entity : made) list.add(entity);
  list.remove(made[1]);
  list.remove(made[1]);
  EXPECT_EQ(list.count(), 3);
  EXPECT_EQ(list.iteration_count(), 2);
  EXPECT_EQ(list[1], nullptr);
  for (int walk = 0; walk < 2; ++walk) {
    list.init();
    for (const ENTITY* expected : {made[0], made[2]}) EXPECT_EQ(list.next(), expected);
    EXPECT_EQ(list.next(), nullptr);
  }
  EXPECT_EQ(list.add(made[1]), 3);
}

// --- Kernel context and faults -------------------------------------------------------------------

PLANE* MakePlane() { return new (1, __FILE__, __LINE__) PLANE(plane()); }

TEST(KernelBoard, TakesBackWhatAFailedFrameMadeAndNothingElse) {
  outcome good, bad(5);
  const PLANE* before = MakePlane();
  api_bb_begin(1);
  const PLANE* outer = MakePlane();
  api_bb_begin(1);
  const PLANE* inner = MakePlane();
  api_bb_end(bad, 1, 0);
  EXPECT_FALSE(kernel_state::is_live(inner));
  api_bb_end(good, 1, 0);
  api_bb_begin(1);
  api_bb_end(bad, 1, 0);
  for (const PLANE* kept : {outer, before}) {
    ASSERT_TRUE(kernel_state::is_live(kept));
    delete kept;
  }
}

TEST(KernelBoard, ShowsImbalanceOfItsThread) {
  std::thread([] {
    outcome good;
    api_bb_begin(1);
    error_begin();
    EXPECT_EQ(standin::Count().openBoards, 1);
    EXPECT_EQ(standin::Count().errorDepth, 1);
    for (int ends = 0; ends < 2; ++ends) {
      api_bb_end(good, 1, 0);
      error_end();
    }
    EXPECT_EQ(standin::Count().openBoards, -1);
    EXPECT_EQ(standin::Count().errorDepth, -1);
  }).join();
  EXPECT_EQ(standin::Count().openBoards, 0);
  EXPECT_EQ(standin::Count().errorDepth, 0);
}

TEST(StandinFault, FiresOnceAtItsCallAndSaysSo) {
  standin::Part part;
  FACE& face = part.Face(L"top");
  ENTITY_LIST list;
  ATTRIB_GEN_NAME* attribute = nullptr;
  for (const bool afterWork : {false, true}) {
    attribute = nullptr;
    const Fault fault = Fault::KernelCall(2, 7, afterWork);
    EXPECT_EQ(api_get_faces(&face, list).error_number(), 0);
    EXPECT_FALSE(fault.HasFired());
    EXPECT_EQ(api_find_named_attribute(&face, "ATTRIB_XORVO_NAME", attribute).error_number(), 7);
    EXPECT_TRUE(fault.HasFired());
    EXPECT_EQ(attribute != nullptr, afterWork);
    EXPECT_EQ(api_get_edges(&face, list).error_number(), 0);
    EXPECT_EQ(fault.Calls(), 3);
  }
  const auto before = Balance();
  const Fault fault = Fault::TrackedAllocation(2);
  const PLANE* first = MakePlane();
  EXPECT_EQ(MakePlane(), nullptr);
  EXPECT_TRUE(fault.HasFired());
  EXPECT_EQ(standin::Count().trackedBytes - before[1], static_cast<long>(sizeof(PLANE)));
  delete first;
  EXPECT_EQ(Balance(), before);
}

// --- Enumerations --------------------------------------------------------------------------------

template <typename... Enums>
void ExpectFallback(int strange) {
  EXPECT_EQ((... + static_cast<int>(KOVAOrvoPMIEnumUtils::ToEnum(static_cast<Enums>(strange)))), 0);
}

}  // namespace

#include "IdentifierHashMap.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Matchers.h"

namespace {

using ::testing::ElementsAre;
using List = IdentifierHashMap::List;

void* Native(std::uintptr_t value) { return reinterpret_cast<void*>(value); }
KOVAIdentifier Key(std::uintptr_t native, const char* typeName = nullptr) {
  return {Native(native), typeName, nullptr, nullptr, KOVAIdentifierCastHandle(nullptr)};
}
List Values(std::initializer_list<std::uintptr_t> natives) {
  List list;
  for (const std::uintptr_t native : natives) list.push_back(Key(native));
  return list;
}
std::vector<std::uintptr_t> Numbers(const List& list) {
  std::vector<std::uintptr_t> numbers;
  for (const auto& value : list) {
    numbers.push_back(reinterpret_cast<std::uintptr_t>(value.GetNativeObject()));
  }
  return numbers;
}
List KeysOf(const IdentifierHashMap& map) {
  List keys;
  map.Walk([&](const KOVAIdentifier& key, const List&) {
    keys.push_back(key);
    return true;
  });
  return keys;
}

// Puts a key at the position of its native object's number.
std::uint32_t HashByNumber(const KOVAIdentifier& key) {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(key.GetNativeObject()));
}
std::uint32_t HashAlike(const KOVAIdentifier& /*key*/) { return 16; }
bool SameTypeName(const KOVAIdentifier& a, const KOVAIdentifier& b) {
  return SameName(a.GetTypeName(), b.GetTypeName());
}

class BothForms : public ::testing::TestWithParam<bool> {
 protected:
  standin::UseStdHash switch_{GetParam()};
};
INSTANTIATE_TEST_SUITE_P(IdentifierHashMap, BothForms, ::testing::Bool(),
                         [](const auto& form) { return form.param ? "Standard" : "Table"; });

TEST_P(BothForms, KeysMatchByNativeObjectAndTheFirstListStays) {
  IdentifierHashMap map(12, true);
  EXPECT_TRUE(map.Add(Key(64, "view"), Values({1, 2})));
  EXPECT_FALSE(map.Add(Key(64), Values({3})));
  EXPECT_TRUE(map.Add(Key(0, "null view"), Values({4})));
  EXPECT_FALSE(map.Add(KOVAIdentifier(), Values({5})));
  EXPECT_EQ(map.Count(), 2);
  List list = Values({9});
  EXPECT_FALSE(map.Lookup(Key(65, "view"), list));
  EXPECT_THAT(Numbers(list), ElementsAre(9));
  EXPECT_TRUE(map.Lookup(Key(64, "other"), list));
  EXPECT_THAT(Numbers(list), ElementsAre(1, 2));
  list.clear();  // a copy
  EXPECT_TRUE(map.Lookup(Key(64), list));
  EXPECT_THAT(Numbers(list), ElementsAre(1, 2));
  EXPECT_THAT(Numbers(*map.Find(KOVAIdentifier())), ElementsAre(4));
}

TEST_P(BothForms, ReplaceAndAppendChangeThePresentKeyAlone) {
  IdentifierHashMap map(12, true);
  map.Add(Key(64), Values({1}));
  map.Add(Key(128), Values({2}));
  EXPECT_TRUE(map.Replace(Key(64, "other"), Values({7, 8})));
  EXPECT_TRUE(map.Append(Key(64), Key(9)));
  EXPECT_FALSE(map.Replace(Key(192), Values({3})));
  EXPECT_FALSE(map.Append(Key(192), Key(3)));
  EXPECT_EQ(map.Count(), 2);
  EXPECT_THAT(Numbers(*map.Find(Key(64))), ElementsAre(7, 8, 9));
  EXPECT_THAT(Numbers(*map.Find(Key(128))), ElementsAre(2));
}

TEST_P(BothForms, WalkVisitsEveryPairOnceUntilItIsStopped) {
  IdentifierHashMap map(12, true);
  for (std::uintptr_t i = 0; i < 100; ++i) map.Add(Key(i * 64), {});
  std::vector<std::uintptr_t> keys = Numbers(KeysOf(map));
  std::sort(keys.begin(), keys.end());
  ASSERT_EQ(keys.size(), 100u);
  for (std::uintptr_t i = 0; i < 100; ++i) EXPECT_EQ(keys[i], i * 64);
  int visits = 0;
  map.Walk([&](const KOVAIdentifier&, const List&) { return ++visits < 3; });
  EXPECT_EQ(visits, 3);
}

TEST_P(BothForms, ClearForgetsEverythingAndLeavesSeventeenPositions) {
  IdentifierHashMap map(100, true);
  for (std::uintptr_t i = 1; i <= 200; ++i) map.Add(Key(i * 64), Values({i}));
  map.Clear();
  EXPECT_EQ(map.Count(), 0);
  EXPECT_EQ(map.PositionCount(), 17);
  EXPECT_EQ(map.Find(Key(64)), nullptr);
  EXPECT_TRUE(map.Add(Key(64), Values({5})));
  EXPECT_THAT(Numbers(KeysOf(map)), ElementsAre(64));
}

TEST_P(BothForms, OwnFunctionsDecideHashAndEquality) {
  IdentifierHashMap map(12, true, HashAlike, SameTypeName);
  EXPECT_TRUE(map.Add(Key(64, "a"), Values({1})));
  EXPECT_TRUE(map.Add(Key(64, "b"), Values({2})));
  EXPECT_FALSE(map.Add(Key(128, "a"), Values({3})));
  EXPECT_THAT(Numbers(*map.Find(Key(192, "b"))), ElementsAre(2));
  EXPECT_EQ(map.Find(Key(64)), nullptr);
}

TEST(IdentifierHashMapTable, HasAThirdMorePositionsThanKeysAndOne) {
  for (const auto& [keys, positions] : {std::pair{0, 1}, {1, 2}, {3, 5}, {12, 17}, {100, 134}}) {
    EXPECT_EQ(IdentifierHashMap(keys, true).PositionCount(), positions) << keys;
  }
}

TEST(IdentifierHashMapTable, DoublesAtTheThirteenthKeyAndFindsEveryEarlierOne) {
  IdentifierHashMap map(12, true), small(0, true);
  for (std::uintptr_t i = 1; i <= 26; ++i) {
    map.Add(Key(i * 64), Values({i}));
    small.Add(Key(i * 64), Values({i}));
    EXPECT_EQ(map.PositionCount(), i < 13 ? 17 : i < 26 ? 34 : 68) << i;  // 26 > 0.75 x 34
    for (std::uintptr_t j = 1; j <= i; ++j) {
      ASSERT_NE(map.Find(Key(j * 64)), nullptr) << j << " after " << i;
      EXPECT_THAT(Numbers(*map.Find(Key(j * 64))), ElementsAre(j));
      EXPECT_NE(small.Find(Key(j * 64)), nullptr) << j << " after " << i;
    }
  }
  EXPECT_EQ(map.Count(), 26);
}

TEST(IdentifierHashMapTable, WalksByPositionWhateverTheOrderOfInsertion) {
  // Position 16 twice: the second key wraps around to 0 and pushes the key of 0 on to 1.
  IdentifierHashMap map(12, true, HashByNumber);
  for (const std::uintptr_t key : {9u, 16u, 33u, 5u, 17u, 12u}) map.Add(Key(key), Values({key}));
  EXPECT_THAT(Numbers(KeysOf(map)), ElementsAre(33, 17, 5, 9, 12, 16));
  EXPECT_THAT(Numbers(*map.Find(Key(33))), ElementsAre(33));
  EXPECT_THAT(Numbers(*map.Find(Key(17))), ElementsAre(17));
  EXPECT_EQ(map.Find(Key(50)), nullptr);  // goes the same way and ends at 2
  EXPECT_FALSE(map.Add(Key(33), {}));
  // By the own hash these start at 12, 7, 2 and 0.
  IdentifierHashMap own(12, true);
  for (const std::uintptr_t key : {0xffffffff80000000, 0x10UL, 0x7f0012345678UL, 0UL}) {
    own.Add(Key(key), {});
  }
  EXPECT_THAT(Numbers(KeysOf(own)), ElementsAre(0, 0x7f0012345678, 0x10, 0xffffffff80000000));
}

TEST(IdentifierHashMap, UsesTheStandardMapOnlyWhenAllowedAndAsked) {
  for (const int asked : {0, 1}) {
    for (const int allowed : {0, 1}) {
      const standin::UseStdHash option(asked != 0);
      IdentifierHashMap map(12, allowed != 0);
      const int positions = map.PositionCount();
      for (std::uintptr_t i = 1; i <= 13; ++i) map.Add(Key(i * 64), {});
      EXPECT_EQ(map.PositionCount(), asked * allowed != 0 ? positions : 34) << asked << allowed;
      EXPECT_EQ(map.Count(), 13);
    }
  }
}

TEST(IdentifierHashMap, HashesAPointerAsCalculatedElsewhere) {
  const struct {
    std::uintptr_t pointer;
    std::uint32_t table;
    std::uint64_t standard;
  } kHashes[] = {
      {0, 0, 0xa8c7f832281a39c5},
      {1, 0x591f56a8, 0x89cd31291d2aefa4},
      {0x10, 0x9d9bd00, 0x987468c2d70edbd5},
      {0x7f0012345678, 0x57d8923f, 0xa3e6547370e7f1a0},
      {0xffffffff80000000, 0x59433a5, 0x8cea9da2a33ec3a1},
      {0x5555deadbeef, 0x69f3e14b, 0x1e703a2d9884bcc5},
  };
  for (const auto& [pointer, table, standard] : kHashes) {
    EXPECT_EQ(IdentifierHashMap::HashOfPointer(Native(pointer)), table) << std::hex << pointer;
    EXPECT_EQ(IdentifierHashMap::StandardHashOfPointer(Native(pointer)), standard);
  }
}

}  // namespace

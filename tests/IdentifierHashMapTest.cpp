#include "IdentifierHashMap.h"

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
  for (const std::uintptr_t key : {0xffffffff80000000ULL, 0x10ULL, 0x7f0012345678ULL, 0ULL}) {
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

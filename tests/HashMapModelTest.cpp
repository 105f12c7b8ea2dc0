// IdentifierHashMap against a standard map, under operations drawn by lot.

#include <algorithm>
#include <random>
#include <unordered_map>

#include "IdentifierHashMap.h"
#include "Matchers.h"

namespace {

using Hash = IdentifierHashMap::HashFunction;

// Hash functions that put many keys in one place, or all of them in the last.
std::uint32_t OneOfFour(const KOVAIdentifier& key) {
  return static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(key.GetNativeObject()) & 3);
}
std::uint32_t Last(const KOVAIdentifier& /*key*/) { return 0xffffffffu; }

class HashMapModel {
 public:
  HashMapModel(unsigned seed, bool standard, Hash hash, std::size_t keys)
      : engine_(seed),
        standard_(standard),
        switch_(standard || seed % 2 == 0),
        positions_(static_cast<int>(seed % 20 * 1.3333333333333333) + 1),
        objects_(keys),
        map_(static_cast<int>(seed % 20), standard || seed % 2 == 1, hash) {}

  void Run(int operations) {
    for (int i = 0; i < operations && !::testing::Test::HasFatalFailure(); ++i) {
      Operate();
      if (i % 512 == 0 || i + 1 == operations) CompareAll();
      ASSERT_EQ(map_.Count(), static_cast<int>(model_.size()));
      ASSERT_EQ(standard_ ? positions_ : map_.PositionCount(), positions_);
    }
  }

 private:
  using List = IdentifierHashMap::List;
  using Objects = std::vector<void*>;

  std::size_t Below(std::size_t count) { return engine_() % count; }
  void* Object() { return Below(60) == 0 ? nullptr : &objects_[Below(objects_.size())]; }
  static Objects ObjectsOf(const List& list) {
    Objects objects;
    for (const KOVAIdentifier& each : list) objects.push_back(each.GetNativeObject());
    return objects;
  }

  // A key is found by its object, whatever else it says.
  void Operate() {
    KOVAIdentifier key = Naming(Object()), value = Naming(Object());
    key.SetTypeName(Below(2) == 0 ? "view" : nullptr);
    const bool present = model_.count(key.GetNativeObject()) != 0;
    const List list(Below(4), value), untouched{SentinelIdentifier()};
    const auto kind = Below(objects_.size() * 4) == 0 ? 9 : Below(8);
    if (kind < 2) {  // the table grows before it looks, so for a key that is there too
      if (static_cast<double>(model_.size() + 1) > positions_ * 0.75) positions_ *= 2;
      ASSERT_EQ(map_.Add(key, list), !present);
      model_.emplace(key.GetNativeObject(), ObjectsOf(list));
    } else if (kind <= 3) {
      ASSERT_EQ(map_.Replace(key, list), present);
      if (present) model_[key.GetNativeObject()] = ObjectsOf(list);
    } else if (kind == 4) {
      List out = untouched;
      ASSERT_EQ(map_.Lookup(key, out), present);
      ASSERT_EQ(ObjectsOf(out), present ? model_[key.GetNativeObject()] : ObjectsOf(untouched));
    } else if (kind == 5) {
      const List* stored = map_.Find(key);
      ASSERT_EQ(stored != nullptr, present);
      ASSERT_EQ(ObjectsOf(present ? *stored : List()),
                present ? model_[key.GetNativeObject()] : Objects());
    } else if (kind == 6) {  // a walk stops when it is told to
      const std::size_t limit = Below(3) + 1;
      std::size_t visits = 0;
      map_.Walk([&](const KOVAIdentifier&, const List&) { return ++visits < limit; });
      ASSERT_EQ(visits, std::min(limit, model_.size()));
    } else if (kind == 7) {
      if (!present && static_cast<double>(model_.size() + 1) > positions_ * 0.75) positions_ *= 2;
      ASSERT_EQ(map_.AddOrAppend(key, value), !present);
      model_[key.GetNativeObject()].push_back(value.GetNativeObject());
    } else {
      map_.Clear();
      model_.clear();
      positions_ = 17;
    }
  }

  // Every pair is walked once.
  void CompareAll() {
    auto left = model_;
    map_.Walk([&](const KOVAIdentifier& key, const List& list) {
      const auto found = left.find(key.GetNativeObject());
      EXPECT_TRUE(found != left.end() && found->second == ObjectsOf(list));
      return found != left.end() && left.erase(key.GetNativeObject()) == 1;
    });
    ASSERT_TRUE(left.empty()) << left.size() << " keys are lost";
  }

  std::mt19937 engine_;
  bool standard_;
  standin::UseStdHash switch_;  // a table comes from either side forbidding the standard map
  int positions_;
  std::vector<char> objects_;
  std::unordered_map<void*, Objects> model_;
  IdentifierHashMap map_;
};

TEST(HashMapModel, HoldsWhatAStandardMapHolds) {
  const std::tuple<Hash, std::size_t, int> runs[] = {
      {nullptr, 40, 3000}, {nullptr, 4000, 20000}, {OneOfFour, 150, 6000}, {Last, 80, 3000}};
  for (unsigned seed = 0; seed < 8; ++seed) {
    for (const auto& [hash, keys, operations] : runs) {
      for (const bool standard : {false, true}) {
        HashMapModel(seed, standard, hash, keys).Run(operations);
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ", " << keys << " keys"
                                   << (standard ? ", standard map" : ", table");
      }
    }
  }
}

}  // namespace

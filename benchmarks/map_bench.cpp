// The identifier hash map beside the standard one.
#include <algorithm>
#include <random>
#include <unordered_map>

#include "IdentifierHashMap.h"
#include "Measure.h"

namespace {

// The table's own hash, so that storage is compared with storage alone.
struct SameHash {
  std::size_t operator()(const KOVAIdentifier& key) const {
    return IdentifierHashMap::HashOfPointer(key.GetNativeObject());
  }
};
struct Equal {
  bool operator()(const KOVAIdentifier& a, const KOVAIdentifier& b) const {
    return a.GetNativeObject() == b.GetNativeObject();
  }
};
using Standard = std::unordered_map<KOVAIdentifier, IdentifierHashMap::List, SameHash, Equal>;

// Entities as the kernel's allocator lays them out, in the order of their creation or in none.
std::vector<KOVAIdentifier> Keys(int count, bool shuffled) {
  struct alignas(16) Object {
    char bytes[112];
  };
  static std::vector<Object> objects(1000000);
  std::vector<KOVAIdentifier> keys;
  for (int i = 0; i < count; ++i) {
    keys.emplace_back(&objects[static_cast<std::size_t>(i)], "annotation", nullptr, "ENTITY",
                      KOVAIdentifierCastHandle(nullptr));
  }
  if (shuffled) std::shuffle(keys.begin(), keys.end(), std::mt19937(12));
  return keys;
}

// Adds all keys, each with a list of one, to `count` new maps and looks all of them up.
template <typename Make, typename Add, typename Find>
double Seconds(int count, const std::vector<KOVAIdentifier>& keys, Make make, Add add, Find find) {
  std::vector<decltype(make())> maps;
  for (int m = 0; m < count; ++m) maps.push_back(make());
  return measure::Time([&] {
    for (const auto& map : maps) {
      for (const KOVAIdentifier& key : keys) add(*map, key);
      for (const KOVAIdentifier& key : keys) benchmark::DoNotOptimize(find(*map, key));
    }
  });
}

void AddAndLookUp(benchmark::State& state, int count, bool shuffled) {
  const std::vector<KOVAIdentifier> keys = Keys(count, shuffled);
  const int maps = std::max(1, 20000 / count);
  const auto size = static_cast<std::size_t>(count);
  measure::Compare(
      state, static_cast<double>(count) * maps,
      [&] {
        return Seconds(
            maps, keys, [&] { return std::make_unique<IdentifierHashMap>(count, false); },
            [](IdentifierHashMap& map, const KOVAIdentifier& key) { map.Add(key, {key}); },
            [](const IdentifierHashMap& map, const KOVAIdentifier& key) {
              return map.Find(key)->data();
            });
      },
      [&] {
        return Seconds(
            maps, keys,
            [&] {
              auto map = std::make_unique<Standard>();
              map->reserve(size);
              return map;
            },
            [](Standard& map, const KOVAIdentifier& key) {
              map.try_emplace(key, IdentifierHashMap::List{key});
            },
            [](const Standard& map, const KOVAIdentifier& key) {
              return map.find(key)->second.data();
            });
      });
}

}  // namespace

int main(int argc, char** argv) {
  for (int count = 10; count <= 1000000; count *= 10) {
    for (const bool shuffled : {false, true}) {
      const std::string name = std::to_string(count) + (shuffled ? " shuffled" : " in order");
      const int repetitions = std::clamp(2000000 / count, 5, 15);
      measure::Register("map:" + name, repetitions,
                        [=](auto& state) { AddAndLookUp(state, count, shuffled); });
    }
  }
  return measure::Run(argc, argv);
}

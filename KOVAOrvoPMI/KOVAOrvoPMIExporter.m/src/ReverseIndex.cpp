#include "ReverseIndex.h"

#include <algorithm>
#include <functional>

#include "KernelMemoryManager.h"

namespace {

constexpr std::less<const void*> kBefore{};

}  // namespace

void ReverseIndex::Reserve(std::size_t count) {
  const std::size_t needed = entries_.size() + count;
  if (needed > entries_.capacity()) entries_.reserve(std::max(needed, 2 * entries_.size()));
}

void ReverseIndex::Sort(const IdentifierHashMap& map) {
  const auto byKey = [](const Entry& a, const Entry& b) {
    return a.object != b.object ? kBefore(a.object, b.object) : kBefore(a.key, b.key);
  };
  const auto sameObject = [](const Entry& a, const Entry& b) { return a.object == b.object; };
  const auto same = [](const Entry& a, const Entry& b) {
    return a.object == b.object && a.key == b.key;
  };
  const auto byPlace = [](const Entry& a, const Entry& b) {
    return a.object != b.object ? kBefore(a.object, b.object) : a.place < b.place;
  };
  if (!std::is_sorted(entries_.begin(), entries_.end(), byKey)) {
    std::sort(entries_.begin(), entries_.end(), byKey);
  }
  entries_.erase(std::unique(entries_.begin(), entries_.end(), same), entries_.end());
  if (std::adjacent_find(entries_.begin(), entries_.end(), sameObject) == entries_.end()) return;

  int place = 0;
  map.Walk([&](const KOVAIdentifier& key, const IdentifierHashMap::List& listed) {
    for (const KOVAIdentifier& each : listed) {
      const Entry wanted{each.GetNativeObject(), key.GetNativeObject(), 0};
      const auto found = std::lower_bound(entries_.begin(), entries_.end(), wanted, byKey);
      if (found != entries_.end() && same(*found, wanted)) found->place = place;
    }
    ++place;
    return true;
  });
  std::sort(entries_.begin(), entries_.end(), byPlace);
}

void* ReverseIndex::First(const void* object) const {
  const auto found =
      std::lower_bound(entries_.begin(), entries_.end(), object,
                       [](const Entry& a, const void* b) { return kBefore(a.object, b); });
  return found != entries_.end() && found->object == object ? found->key : nullptr;
}

void* ReverseIndex::Last(const void* object) const {
  const auto after =
      std::upper_bound(entries_.begin(), entries_.end(), object,
                       [](const void* a, const Entry& b) { return kBefore(a, b.object); });
  return after != entries_.begin() && (after - 1)->object == object ? (after - 1)->key : nullptr;
}

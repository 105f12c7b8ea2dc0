#include "IdentifierHashMap.h"

#include <algorithm>
#include <utility>

#include "IdentifierConventions.h"
#include "KernelMemoryManager.h"
#include "Prefetch.h"
#include "framework_base/KOVAHashOption.h"

namespace {

constexpr int kDefaultExpectedSize = 12;
constexpr float kMaximumLoadFactor = 0.75F;

int PositionsFor(int expectedSize) {
  return static_cast<int>(expectedSize * 1.3333333333333333) + 1;
}

// All steps wrap around in 32 bits; right shifts copy the sign bit in.
std::uint32_t ShiftRight(std::uint32_t x, int bits) {
  return static_cast<std::uint32_t>(static_cast<std::int32_t>(x) >> bits);
}

// The steps that both hashes share, from the second one on.
std::uint32_t MixTail(std::uint32_t x) {
  x ^= ShiftRight(x, 10);
  x *= 9;
  x ^= ShiftRight(x, 6);
  x += ~(x << 11);
  x ^= ShiftRight(x, 16);
  return x;
}

std::uint32_t Mix(std::uint32_t x) { return MixTail(x + ~(x << 15)); }

}  // namespace

std::uint32_t IdentifierHashMap::HashOfPointer(const void* pointer) {
  const std::uint64_t bits = reinterpret_cast<std::uintptr_t>(pointer);
  const std::uint32_t a = Mix(static_cast<std::uint32_t>(bits));
  const std::uint32_t b = Mix(static_cast<std::uint32_t>(bits >> 32));
  return MixTail(a + ~(b << 15));
}

std::uint64_t IdentifierHashMap::StandardHashOfPointer(const void* pointer) {
  const std::uint64_t bits = reinterpret_cast<std::uintptr_t>(pointer);
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (int byte = 0; byte < 8; ++byte) {
    hash ^= (bits >> (8 * byte)) & 0xffU;
    hash *= 0x100000001b3U;
  }
  return hash;
}

std::size_t IdentifierHashMap::StandardHash::operator()(const KOVAIdentifier& key) const {
  return hash != nullptr ? hash(key) : StandardHashOfPointer(key.GetNativeObject());
}

bool IdentifierHashMap::Equal::operator()(const KOVAIdentifier& a, const KOVAIdentifier& b) const {
  return equal != nullptr ? equal(a, b) : a.GetNativeObject() == b.GetNativeObject();
}

IdentifierHashMap::Table::Table(int positions)
    : occupied(positions), keys(positions), lists(positions) {
  Fill(positions);
}

void IdentifierHashMap::Table::Fill(int positions) {
  for (int i = 0; i < positions; ++i) occupied.Add(false);
  for (int i = 0; i < positions; ++i) keys.Add(EmptyIdentifier());
  for (int i = 0; i < positions; ++i) lists.Add(List());
}

IdentifierHashMap::IdentifierHashMap(int expectedSize, bool allowStandardBacking, HashFunction hash,
                                     EqualFunction equal)
    : hash_(hash), equal_{equal}, table_(std::make_unique<Table>(PositionsFor(expectedSize))) {
  if (!allowStandardBacking || !KOVAHashOption::GetUseStdHash()) return;
  standard_ = std::make_unique<Standard>(0, StandardHash{hash}, equal_);
  standard_->max_load_factor(1.0F);
  standard_->reserve(static_cast<std::size_t>(expectedSize));
}

IdentifierHashMap::~IdentifierHashMap() = default;

int IdentifierHashMap::StartPosition(Table& table, const KOVAIdentifier& key) const {
  const std::uint32_t hash = hash_ != nullptr ? hash_(key) : HashOfPointer(key.GetNativeObject());
  // NOLINTNEXTLINE(clang-analyzer-core.DivideZero): a table has one position at least.
  return static_cast<int>(hash % static_cast<std::uint32_t>(table.occupied.Count()));
}

int IdentifierHashMap::Position(Table& table, const KOVAIdentifier& key, int start) const {
  const int positions = table.occupied.Count();
  int position = start;
  while (table.occupied[position] && !equal_(table.keys[position], key)) {
    if (++position == positions) position = 0;
  }
  return position;
}

// Makes a table of twice as many positions when one more pair would be too many for this one.
void IdentifierHashMap::GrowWhenFull() {
  const int positions = PositionCount();
  if (static_cast<float>(pairCount_ + 1) <= static_cast<float>(positions) * kMaximumLoadFactor) {
    return;
  }
  auto larger = std::make_unique<Table>(positions * 2);
  for (int i = 0; i < positions; ++i) {
    if (!table_->occupied[i]) continue;
    const int position = Position(*larger, table_->keys[i]);
    larger->occupied[position] = true;
    larger->keys[position] = table_->keys[i];
    larger->lists[position].swap(table_->lists[i]);
  }
  table_ = std::move(larger);
}

bool IdentifierHashMap::Add(const KOVAIdentifier& key, List list) {
  if (standard_ != nullptr) return standard_->try_emplace(key, std::move(list)).second;
  GrowWhenFull();
  const int position = Position(*table_, key);
  if (table_->occupied[position]) return false;
  table_->keys[position] = key;
  table_->lists[position].swap(list);
  table_->occupied[position] = true;
  ++pairCount_;
  return true;
}

bool IdentifierHashMap::AddOrAppend(const KOVAIdentifier& key, const KOVAIdentifier& value) {
  List* list = FindList(key);
  if (list == nullptr) return Add(key, List(1, value));
  list->push_back(value);
  return false;
}

IdentifierHashMap::List* IdentifierHashMap::FindList(const KOVAIdentifier& key) const {
  if (standard_ != nullptr) {
    const auto found = standard_->find(key);
    return found == standard_->end() ? nullptr : &found->second;
  }
  const int position = Position(*table_, key);
  return table_->occupied[position] ? &table_->lists[position] : nullptr;
}

const IdentifierHashMap::List* IdentifierHashMap::Find(const KOVAIdentifier& key) const {
  return FindList(key);
}

bool IdentifierHashMap::Lookup(const KOVAIdentifier& key, List& list) const {
  const List* found = FindList(key);
  if (found != nullptr) list = *found;
  return found != nullptr;
}

bool IdentifierHashMap::Replace(const KOVAIdentifier& key, List list) {
  List* found = FindList(key);
  if (found != nullptr) found->swap(list);
  return found != nullptr;
}

void IdentifierHashMap::Clear() {
  if (standard_ != nullptr) standard_->clear();
  table_->occupied.ReleaseElements();
  table_->keys.ReleaseElements();
  table_->lists.ReleaseElements();
  table_->Fill(PositionsFor(kDefaultExpectedSize));
  pairCount_ = 0;
}

// Each look-up waits for memory; 32 of them wait together. An exporter of 100,000 annotations is
// destroyed in 1.3 times what plain records take, and in 1.4 times with the lists sorted by
// address.
void IdentifierHashMap::Clear(const List& keys) {
  constexpr std::size_t kTogether = 32;
  int starts[kTogether];
  for (std::size_t first = 0; standard_ == nullptr && first < keys.size(); first += kTogether) {
    const std::size_t count = std::min(kTogether, keys.size() - first);
    for (std::size_t i = 0; i < count; ++i) {
      starts[i] = StartPosition(*table_, keys[first + i]);
      Prefetch(&table_->occupied[starts[i]]);
      Prefetch(&table_->keys[starts[i]]);
      Prefetch(&table_->lists[starts[i]]);
    }
    for (std::size_t i = 0; i < count; ++i) {
      List().swap(table_->lists[Position(*table_, keys[first + i], starts[i])]);
    }
  }
  Clear();
}

int IdentifierHashMap::Count() const {
  return standard_ != nullptr ? static_cast<int>(standard_->size()) : pairCount_;
}

#include "IdentifierHashMap.h"

#include <new>
#include <utility>

#include "KernelMemoryManager.h"
#include "framework_base/KOVAHashOption.h"

namespace {

constexpr int kDefaultExpectedSize = 12;

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

bool IdentifierHashMap::StandardEqual::operator()(const KOVAIdentifier& a,
                                                  const KOVAIdentifier& b) const {
  return equal != nullptr ? equal(a, b) : a.GetNativeObject() == b.GetNativeObject();
}

IdentifierHashMap::IdentifierHashMap(Positions positions, HashFunction hash, EqualFunction equal)
    : hash_(hash),
      equal_(equal),
      occupied_(positions.count),
      keys_(positions.count),
      lists_(positions.count) {
  Fill(positions.count);
}

IdentifierHashMap::IdentifierHashMap(int expectedSize, bool allowStandardBacking, HashFunction hash,
                                     EqualFunction equal)
    : IdentifierHashMap(Positions{PositionsFor(expectedSize)}, hash, equal) {
  if (!allowStandardBacking || !KOVAHashOption::GetUseStdHash()) return;
  standard_ = std::make_unique<Standard>(0, StandardHash{hash}, StandardEqual{equal});
  standard_->max_load_factor(1.0F);
  standard_->reserve(static_cast<std::size_t>(expectedSize));
}

IdentifierHashMap::~IdentifierHashMap() = default;

void IdentifierHashMap::Fill(int positions) {
  reciprocal_ = ~std::uint64_t{0} / static_cast<std::uint64_t>(positions) + 1;
  for (int i = 0; i < positions; ++i) occupied_.Add(false);
  for (int i = 0; i < positions; ++i) keys_.Add(KOVAIdentifier());
  for (int i = 0; i < positions; ++i) lists_.Add(List());
}

// The remainder of a 32-bit hash by two multiplications (Lemire, Kaser, Kurz: "Faster remainder by
// direct computation", 2019).
int IdentifierHashMap::StartPosition(const KOVAIdentifier& key) const {
  const std::uint32_t hash = hash_ != nullptr ? hash_(key) : HashOfPointer(key.GetNativeObject());
  const std::uint64_t fraction = reciprocal_ * hash;
  const auto positions = static_cast<std::uint64_t>(occupied_.Count());
  const std::uint64_t low = (fraction & 0xffffffffU) * positions;
  return static_cast<int>(((fraction >> 32) * positions + (low >> 32)) >> 32);
}

int IdentifierHashMap::Position(const KOVAIdentifier& key) const {
  const int positions = occupied_.Count();
  const bool* const occupied = &occupied_[0];
  const KOVAIdentifier* const keys = &keys_[0];
  int position = StartPosition(key);
  if (equal_ == nullptr) {
    const void* const object = key.GetNativeObject();
    while (occupied[position] && keys[position].GetNativeObject() != object) {
      if (++position == positions) position = 0;
    }
  } else {
    while (occupied[position] && !equal_(keys[position], key)) {
      if (++position == positions) position = 0;
    }
  }
  return position;
}

// Whether one more pair would be too many for the table.
bool IdentifierHashMap::IsFull() const {
  return static_cast<float>(pairCount_ + 1) >
         static_cast<float>(occupied_.Count()) * maximumLoadFactor_;
}

void IdentifierHashMap::Grow() {
  IdentifierHashMap larger(Positions{occupied_.Count() * 2}, hash_, equal_);
  for (int i = 0; i < occupied_.Count(); ++i) {
    if (!occupied_[i]) continue;
    larger.Occupy(larger.Position(keys_[i]), keys_[i], std::move(lists_[i]));
  }
  occupied_.Swap(larger.occupied_);
  keys_.Swap(larger.keys_);
  lists_.Swap(larger.lists_);
  reciprocal_ = larger.reciprocal_;
}

// What an unoccupied position holds is empty: the pair is built over it, with nothing to release.
void IdentifierHashMap::Occupy(int position, const KOVAIdentifier& key, List&& list) {
  new (&keys_[position]) KOVAIdentifier(key);
  new (&lists_[position]) List(std::move(list));
  occupied_[position] = true;
  ++pairCount_;
}

bool IdentifierHashMap::Add(const KOVAIdentifier& key, List list) {
  if (standard_ != nullptr) return standard_->try_emplace(key, std::move(list)).second;
  if (IsFull()) Grow();
  const int position = Position(key);
  if (occupied_[position]) return false;
  Occupy(position, key, std::move(list));
  return true;
}

bool IdentifierHashMap::AddOrAppend(const KOVAIdentifier& key, const KOVAIdentifier& value) {
  if (standard_ != nullptr) return !Append(key, value) && Add(key, {value});
  int position = Position(key);
  if (occupied_[position]) {
    lists_[position].push_back(value);
    return false;
  }
  List list(1, value);
  if (IsFull()) {
    Grow();
    position = Position(key);
  }
  Occupy(position, key, std::move(list));
  return true;
}

const IdentifierHashMap::List* IdentifierHashMap::Find(const KOVAIdentifier& key) const {
  if (standard_ != nullptr) {
    const auto found = standard_->find(key);
    return found == standard_->end() ? nullptr : &found->second;
  }
  const int position = Position(key);
  return occupied_[position] ? &lists_[position] : nullptr;
}

bool IdentifierHashMap::Lookup(const KOVAIdentifier& key, List& list) const {
  const List* found = Find(key);
  if (found != nullptr) list = *found;
  return found != nullptr;
}

bool IdentifierHashMap::Replace(const KOVAIdentifier& key, List list) {
  auto* found = const_cast<List*>(Find(key));
  if (found != nullptr) found->swap(list);
  return found != nullptr;
}

bool IdentifierHashMap::Append(const KOVAIdentifier& key, const KOVAIdentifier& value) {
  auto* found = const_cast<List*>(Find(key));
  if (found != nullptr) found->push_back(value);
  return found != nullptr;
}

void IdentifierHashMap::Clear() {
  if (standard_ != nullptr) standard_->clear();
  occupied_.ReleaseElements();
  keys_.ReleaseElements();
  lists_.ReleaseElements();
  Fill(PositionsFor(kDefaultExpectedSize));
  pairCount_ = 0;
}

int IdentifierHashMap::Count() const {
  return standard_ != nullptr ? static_cast<int>(standard_->size()) : pairCount_;
}

#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <vector>

#include "framework_base/KOVADynamicArray.h"
#include "framework_core/KOVAIdentifier.h"

// Maps an identifier to a list of identifiers. Keys are the same when their native objects are:
//
//   IdentifierHashMap annotationsOfView(12, true);
//   annotationsOfView.Add(view, {annotation});
//   annotationsOfView.Append(view, another);
//   if (const auto* list = annotationsOfView.Find(view)) ...
//   annotationsOfView.Walk([](const KOVAIdentifier& view, const auto& annotations) { ...; return
//   true; });
//
// It is stored in an open-addressing table or, when that is allowed and KOVAHashOption asks for it,
// in a standard unordered map. A walk visits the table by position, so its order follows the hash
// and not the insertions. Not safe for use from two threads at once.
class IdentifierHashMap {
 public:
  // What a key stands for.
  using List = std::vector<KOVAIdentifier>;
  // Gives the same number for keys that are the same.
  using HashFunction = std::uint32_t (*)(const KOVAIdentifier& key);
  // Whether two keys are the same.
  using EqualFunction = bool (*)(const KOVAIdentifier& a, const KOVAIdentifier& b);

  // Room for `expectedSize` keys. Null functions stand for hash and equality of the native object.
  // REQUIRES: expectedSize >= 0. Throws std::bad_alloc.
  IdentifierHashMap(int expectedSize, bool allowStandardBacking, HashFunction hash = nullptr,
                    EqualFunction equal = nullptr);
  IdentifierHashMap(const IdentifierHashMap&) = delete;
  IdentifierHashMap& operator=(const IdentifierHashMap&) = delete;
  ~IdentifierHashMap();

  // Stores the pair when the key is absent; whether it did. On std::bad_alloc nothing is stored.
  // REQUIRES: `key` is no part of this map.
  bool Add(const KOVAIdentifier& key, List list);
  // Copies the key's list out; whether the key was found. `list` is untouched when not.
  bool Lookup(const KOVAIdentifier& key, List& list) const;
  // Puts another list in place of the key's; whether the key was found.
  bool Replace(const KOVAIdentifier& key, List list);
  // Appends to the key's list in place; whether the key was found.
  bool Append(const KOVAIdentifier& key, const KOVAIdentifier& value);
  // Appends to the key's list, which is a new one of that value alone when the key is absent;
  // whether the key was added. On std::bad_alloc nothing has changed.
  bool AddOrAppend(const KOVAIdentifier& key, const KOVAIdentifier& value);
  // The key's list, or null. Valid until the map changes.
  const List* Find(const KOVAIdentifier& key) const;

  // Calls visit(key, list) for every pair until one call returns false.
  template <typename Visit>
  void Walk(Visit visit) const {
    if (standard_ != nullptr) {
      for (const auto& [key, list] : *standard_) {
        if (!visit(key, list)) return;
      }
      return;
    }
    const int positions = occupied_.Count();
    const bool* const occupied = &occupied_[0];
    const KOVAIdentifier* const keys = &keys_[0];
    const List* const lists = &lists_[0];
    // Which positions are occupied follows no pattern that a processor could foresee: they are
    // taken from a word of 64 flags at a time, and not asked one by one.
    for (int first = 0; first < positions; first += 64) {
      std::uint64_t flags = Flags(occupied + first, std::min(64, positions - first));
      for (; flags != 0; flags &= flags - 1) {
        const int position = first + __builtin_ctzll(flags);
        if (!visit(keys[position], lists[position])) return;
      }
    }
  }

  // Forgets every pair; the table is that of a map made for 12. CAVEAT: a map made for fewer needs
  // memory for it, and can't be used any more when there is none.
  void Clear();

  // The number of pairs.
  int Count() const;
  // Positions of the table.
  int PositionCount() const { return occupied_.Count(); }

  // The table's hash of a pointer: Wang's 32-bit integer hash of both halves.
  static std::uint32_t HashOfPointer(const void* pointer);
  // The standard backing's hash of a pointer: 64-bit FNV-1a.
  static std::uint64_t StandardHashOfPointer(const void* pointer);

 private:
  struct StandardHash {
    HashFunction hash;
    std::size_t operator()(const KOVAIdentifier& key) const;
  };
  struct StandardEqual {
    EqualFunction equal;
    bool operator()(const KOVAIdentifier& a, const KOVAIdentifier& b) const;
  };
  using Standard = std::unordered_map<KOVAIdentifier, List, StandardHash, StandardEqual>;

  // Eight flags as bits, the first one lowest.
  static std::uint64_t EightFlags(const bool* occupied) {
    static_assert(sizeof(bool) == 1, "a flag is a byte");
#ifdef __BYTE_ORDER__
    static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the first flag is the lowest byte");
#endif
    std::uint64_t bytes;
    std::memcpy(&bytes, occupied, sizeof bytes);
    return bytes * 0x0102040810204080U >> 56;
  }
  // The first `count` flags, at most 64.
  static std::uint64_t Flags(const bool* occupied, int count) {
    std::uint64_t flags = 0;
    int i = 0;
    for (; i + 8 <= count; i += 8) flags |= EightFlags(occupied + i) << i;
    for (; i < count; ++i) flags |= std::uint64_t{occupied[i]} << i;
    return flags;
  }

  // A table of that many positions, all unoccupied.
  struct Positions {
    int count;
  };
  IdentifierHashMap(Positions positions, HashFunction hash, EqualFunction equal);

  // Where the search for a key starts.
  int StartPosition(const KOVAIdentifier& key) const;
  // The key's position, or the unoccupied one where its search ends.
  int Position(const KOVAIdentifier& key) const;
  void Fill(int positions);
  bool IsFull() const;
  void Grow();
  void Occupy(int position, const KOVAIdentifier& key, List&& list);

  HashFunction hash_;
  EqualFunction equal_;
  float maximumLoadFactor_ = 0.75F;
  int pairCount_ = 0;
  std::uint64_t reciprocal_ = 0;  // of the number of positions, scaled by 2^64 and rounded up
  KOVADynamicArray<bool> occupied_;
  KOVADynamicArray<KOVAIdentifier> keys_;
  KOVADynamicArray<List> lists_;
  std::unique_ptr<Standard> standard_;  // null while the table is in use
};

#pragma once

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "framework_base/KOVADynamicArray.h"
#include "framework_core/KOVAIdentifier.h"

// Maps an identifier to a list of identifiers. Keys are the same when their native objects are:
//
//   IdentifierHashMap annotationsOfView(12, true);
//   annotationsOfView.Add(view, {annotation});
//   annotationsOfView.AddOrAppend(view, another);
//   if (const auto* list = annotationsOfView.Find(view)) ...
//   annotationsOfView.Walk([&](const KOVAIdentifier& view, const auto& annotations) {
//     ...
//     return true;  // go on
//   });
//
// It is stored in an open-addressing table or, when that is allowed and KOVAHashOption asks for it,
// in a standard unordered map. A walk visits the table by position, so its order follows the hash
// and not the insertions. Not safe for use from two threads at once. The library does not export
// this class; it stands here because the exporter holds two by value.
class IdentifierHashMap {
 public:
  // What a key stands for.
  using List = std::vector<KOVAIdentifier>;
  // Gives the same number for keys that are the same.
  using HashFunction = std::uint32_t (*)(const KOVAIdentifier& key);
  // Returns true if two keys are the same.
  using EqualFunction = bool (*)(const KOVAIdentifier& a, const KOVAIdentifier& b);

  // A map for `expectedSize` keys. Null functions stand for hash and equality of the native object.
  // REQUIRES: expectedSize >= 0. Throws std::bad_alloc.
  IdentifierHashMap(int expectedSize, bool allowStandardBacking, HashFunction hash = nullptr,
                    EqualFunction equal = nullptr);
  IdentifierHashMap(const IdentifierHashMap&) = delete;
  IdentifierHashMap& operator=(const IdentifierHashMap&) = delete;
  ~IdentifierHashMap();

  // Stores the pair and returns true if the key is absent. On std::bad_alloc nothing is stored.
  // REQUIRES: `key` is not a part of this map.
  bool Add(const KOVAIdentifier& key, List list);
  // Copies the key's list out and returns true if the key is found; else `list` is untouched.
  bool Lookup(const KOVAIdentifier& key, List& list) const;
  // Puts another list in place of the key's; returns true if the key is found.
  bool Replace(const KOVAIdentifier& key, List list);
  // Appends to the key's list, which is a new one of that value only when the key is absent.
  // Returns true if the key was added. On std::bad_alloc nothing has changed.
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
    for (int i = 0; i < PositionCount(); ++i) {
      if (table_->occupied[i] && !visit(table_->keys[i], table_->lists[i])) return;
    }
  }

  // Forgets every pair; the table is that of a map made for 12. CAVEAT: throws std::bad_alloc for a
  // map that was made for fewer when there is no memory; such a map can only be destroyed then.
  void Clear();

  // The same, giving back the lists in the order of `keys` first: memory that goes in the order in
  // which it came is put together faster than in the order of the hash.
  void Clear(const List& keys);

  // The number of pairs.
  int Count() const;
  // Positions of the table.
  int PositionCount() const { return table_->occupied.Count(); }

  // The table's hash of a pointer: Wang's 32-bit integer hash of both halves.
  static std::uint32_t HashOfPointer(const void* pointer);
  // The standard backing's hash of a pointer: 64-bit FNV-1a.
  static std::uint64_t StandardHashOfPointer(const void* pointer);

 private:
  struct StandardHash {
    HashFunction hash;
    std::size_t operator()(const KOVAIdentifier& key) const;
  };
  struct Equal {
    EqualFunction equal;
    bool operator()(const KOVAIdentifier& a, const KOVAIdentifier& b) const;
  };
  using Standard = std::unordered_map<KOVAIdentifier, List, StandardHash, Equal>;

  // What stands at each position.
  struct Table {
    explicit Table(int positions);
    // REQUIRES: the arrays are empty.
    void Fill(int positions);

    KOVADynamicArray<bool> occupied;
    KOVADynamicArray<KOVAIdentifier> keys;
    KOVADynamicArray<List> lists;
  };

  // Where the search for a key starts.
  int StartPosition(Table& table, const KOVAIdentifier& key) const;
  // The key's position in a table, or the unoccupied one where its search, begun at `start`, ends.
  int Position(Table& table, const KOVAIdentifier& key, int start) const;
  int Position(Table& table, const KOVAIdentifier& key) const {
    return Position(table, key, StartPosition(table, key));
  }
  // The key's list, or null.
  List* FindList(const KOVAIdentifier& key) const;
  void GrowWhenFull();

  HashFunction hash_;
  Equal equal_;
  int pairCount_ = 0;
  std::unique_ptr<Table> table_;
  std::unique_ptr<Standard> standard_;  // null while the table is in use
};

#pragma once

#include <cstddef>
#include <vector>

#include "IdentifierHashMap.h"

// Tells under which key of an IdentifierHashMap an object is listed, as a walk over the map would,
// at the cost of a binary search:
//
//   viewsOfAnnotation.Reserve(1);
//   viewsOfAnnotation.Add(annotation, plane);      // listed in the map as well
//   viewsOfAnnotation.Sort(viewAnnotationMap);     // once, after the last Add
//   void* view = viewsOfAnnotation.First(annotation);
//
// It holds pointers only and owns nothing that they point to. The library does not export this
// class. Reading from two threads at once is safe, changing is not.
class ReverseIndex {
 public:
  // Makes room for `count` more entries. Throws std::bad_alloc; then nothing has changed.
  void Reserve(std::size_t count);
  // Notes that the map lists `object` under `key`. Needs no memory. REQUIRES: room was reserved.
  void Add(void* object, void* key) { entries_.push_back({object, key, 0}); }
  // Puts the entries in the order of a walk over `map`, which holds all of them. Needs no memory.
  // REQUIRES: called after the last Add and before First and Last.
  void Sort(const IdentifierHashMap& map);

  // The first key of the walk that lists `object`; null when none does.
  void* First(const void* object) const;
  // The last key of the walk that lists `object`; null when none does.
  void* Last(const void* object) const;

 private:
  struct Entry {
    void* object;
    void* key;
    int place;  // of the key in the walk; 0 for all while no object has two keys
  };

  std::vector<Entry> entries_;
};

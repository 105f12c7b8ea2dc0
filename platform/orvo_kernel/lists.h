#pragma once

#include <cstdint>
#include <memory>
#include <vector>

class ENTITY;

// An ordered list of entities, which it does not own. An empty list holds no storage.
class ENTITY_LIST {
 public:
  // Appends `entity` and gives its position; with `check`, an entity that is already there is not
  // appended and its position is given. Null is never appended (-1).
  // Throws std::bad_alloc and leaves the list as it was.
  int add(ENTITY* entity, bool check = true);
  // Takes the entity out; its position stays behind as an empty place.
  void remove(const ENTITY* entity);
  void clear();

  // Positions, empty places included.
  int count() const { return static_cast<int>(entities_.size()); }
  // Entities, empty places left out.
  int iteration_count() const { return count() - removed_; }
  // The entity at a position; null for an empty place and outside the list.
  ENTITY* operator[](int position) const;
  // The position of an entity, or -1.
  int lookup(const ENTITY* entity) const;

  // The list's own iteration: `init` restarts it, `next` gives the following entity, null at the
  // end. CAVEAT: the place it stands at is part of the list.
  void init() const { cursor_ = 0; }
  ENTITY* next() const;

 private:
  // Makes room for one more entity. Throws std::bad_alloc.
  void make_room();
  void index_all();
  std::size_t slot_of(const ENTITY* entity) const;

  std::vector<ENTITY*> entities_;
  std::vector<std::uint32_t> slots_;  // position + 1 by hash; empty until a long list is checked
  int removed_ = 0;
  mutable std::size_t cursor_ = 0;
};

// An ordered list of untyped pointers, which it does not own. Copies share their storage until one
// of them changes.
class VOID_LIST {
 public:
  void add(void* item);
  int count() const { return items_ == nullptr ? 0 : static_cast<int>(items_->size()); }
  // The item at a position; null outside the list.
  void* operator[](int position) const;

 private:
  std::shared_ptr<std::vector<void*>> items_;
};

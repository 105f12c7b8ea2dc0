#include "orvo_kernel/lists.h"

#include <algorithm>

namespace {

constexpr std::size_t kShortList = 16;

}  // namespace

// The slot that holds `entity`, or the empty one where it would go.
std::size_t ENTITY_LIST::slot_of(const ENTITY* entity) const {
  const std::size_t mask = slots_.size() - 1;
  auto hash = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(entity));
  hash *= 0x9e3779b97f4a7c15u;
  std::size_t slot = static_cast<std::size_t>(hash >> 32) & mask;
  while (slots_[slot] != 0 && entities_[slots_[slot] - 1] != entity) slot = (slot + 1) & mask;
  return slot;
}

// Indexes the list anew, with as many slots as one more entity asks for. An entity that the list
// holds twice is found at its first position.
void ENTITY_LIST::index_all() {
  std::size_t slots = 4 * kShortList;
  while (slots <= 2 * entities_.size()) slots *= 2;
  std::vector<std::uint32_t>(slots).swap(slots_);
  for (std::size_t i = 0; i < entities_.size(); ++i) {
    if (entities_[i] == nullptr) continue;
    std::uint32_t& slot = slots_[slot_of(entities_[i])];
    if (slot == 0) slot = static_cast<std::uint32_t>(i + 1);
  }
}

int ENTITY_LIST::lookup(const ENTITY* entity) const {
  if (entity == nullptr) return -1;
  if (!slots_.empty()) return static_cast<int>(slots_[slot_of(entity)]) - 1;
  const auto found = std::find(entities_.begin(), entities_.end(), entity);
  return found == entities_.end() ? -1 : static_cast<int>(found - entities_.begin());
}

void ENTITY_LIST::make_room() {
  if (!slots_.empty() && entities_.size() * 2 >= slots_.size()) index_all();
  if (entities_.size() == entities_.capacity()) {
    entities_.reserve(std::max<std::size_t>(4, 2 * entities_.size()));
  }
}

int ENTITY_LIST::add(ENTITY* entity, bool check) {
  if (entity == nullptr) return -1;
  if (check) {
    if (slots_.empty() && entities_.size() >= kShortList) index_all();
    const int position = lookup(entity);
    if (position >= 0) return position;
  }
  make_room();
  entities_.push_back(entity);
  if (!slots_.empty()) {
    std::uint32_t& slot = slots_[slot_of(entity)];
    if (slot == 0) slot = static_cast<std::uint32_t>(entities_.size());
  }
  return count() - 1;
}

void ENTITY_LIST::remove(const ENTITY* entity) {
  const int position = lookup(entity);
  if (position < 0) return;
  entities_[static_cast<std::size_t>(position)] = nullptr;
  ++removed_;
  if (!slots_.empty()) index_all();
}

void ENTITY_LIST::clear() { *this = ENTITY_LIST(); }

ENTITY* ENTITY_LIST::operator[](int position) const {
  return position < 0 || position >= count() ? nullptr
                                             : entities_[static_cast<std::size_t>(position)];
}

ENTITY* ENTITY_LIST::next() const {
  while (cursor_ < entities_.size()) {
    ENTITY* entity = entities_[cursor_++];
    if (entity != nullptr) return entity;
  }
  return nullptr;
}

void VOID_LIST::add(void* item) {
  auto changed = items_ == nullptr ? std::make_shared<std::vector<void*>>()
                                   : std::make_shared<std::vector<void*>>(*items_);
  changed->push_back(item);
  items_ = std::move(changed);
}

void* VOID_LIST::operator[](int position) const {
  return position < 0 || position >= count() ? nullptr
                                             : (*items_)[static_cast<std::size_t>(position)];
}

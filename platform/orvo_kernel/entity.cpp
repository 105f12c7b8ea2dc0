#include "orvo_kernel/entity.h"

#include <cstdlib>
#include <mutex>
#include <unordered_set>
#include <vector>

#include "orvo_kernel/api.h"
#include "orvo_kernel/geometry.h"
#include "orvo_kernel/internals.h"

namespace kernel_state {

std::atomic<long> liveEntities{0};
std::atomic<long> trackedBytes{0};
std::atomic<long> managerStarts{0};
std::atomic<long> deletionsOfDead{0};
std::atomic<long> deletionCalls{0};
std::atomic<int> lastMemoryType{0};

Faults& faults() {
  thread_local Faults state;
  return state;
}

Context& context() {
  thread_local Context state;
  return state;
}

}  // namespace kernel_state

namespace {

using kernel_state::context;
using kernel_state::faults;

// Every entity that lives.
class Registry {
 public:
  void Add(const ENTITY* entity) {
    const std::lock_guard<std::mutex> lock(mutex_);
    live_.insert(entity);
  }
  void Remove(const ENTITY* entity) {
    const std::lock_guard<std::mutex> lock(mutex_);
    live_.erase(entity);
  }
  bool Holds(const ENTITY* entity) {
    const std::lock_guard<std::mutex> lock(mutex_);
    return live_.count(entity) != 0;
  }

 private:
  std::mutex mutex_;
  std::unordered_set<const ENTITY*> live_;
};

// Never destroyed: entities may be deleted while the process ends.
Registry& registry() {
  static Registry* const instance = new Registry;
  return *instance;
}

// The open boards of a thread: all entities made inside, and where each board begins.
struct Boards {
  std::vector<ENTITY*> made;
  std::vector<std::size_t> begins;
};
Boards& boards() {
  thread_local Boards state;
  return state;
}

// What stands before every piece of tracked storage.
struct alignas(std::max_align_t) StorageHeader {
  std::size_t size;
};

void Release(void* storage) noexcept {
  if (storage == nullptr) return;
  auto* header = static_cast<StorageHeader*>(storage) - 1;
  kernel_state::trackedBytes -= static_cast<long>(header->size);
  std::free(header);
}

}  // namespace

bool kernel_state::is_live(const ENTITY* entity) { return registry().Holds(entity); }

void initialize_mmgr_system() { ++kernel_state::managerStarts; }
void terminate_mmgr_system() { --kernel_state::managerStarts; }

void* ORVO_OBJECT::operator new(std::size_t size, int memoryType, const char* /*file*/,
                                int /*line*/) noexcept {
  kernel_state::lastMemoryType = memoryType;
  auto& state = faults();
  if (++state.allocations == state.failAllocation) {
    state.fired = true;
    return nullptr;
  }
  auto* header = static_cast<StorageHeader*>(std::malloc(sizeof(StorageHeader) + size));
  if (header == nullptr) return nullptr;
  header->size = size;
  kernel_state::trackedBytes += static_cast<long>(size);
  return header + 1;
}

void ORVO_OBJECT::operator delete(void* storage, int, const char*, int) noexcept {
  Release(storage);
}

void ORVO_OBJECT::operator delete(void* storage) noexcept { Release(storage); }

ENTITY::ENTITY() {
  if (!boards().begins.empty()) boards().made.push_back(this);
  try {
    registry().Add(this);
  } catch (...) {
    if (!boards().begins.empty()) boards().made.pop_back();
    throw;
  }
  ++kernel_state::liveEntities;
}

ENTITY::~ENTITY() {
  registry().Remove(this);
  --kernel_state::liveEntities;
}

int ENTITY::identity(int level) const { return level == 0 ? ENTITY_TYPE : -1; }

ATTRIB::ATTRIB(ENTITY* owner) : owner_(owner) {
  if (owner->lastAttribute_ == nullptr) {
    owner->firstAttribute_ = this;
  } else {
    owner->lastAttribute_->next_ = this;
  }
  owner->lastAttribute_ = this;
}

PLANE::PLANE(const plane& definition) : definition_(definition) {
  auto& state = faults();
  if (state.raiseCode != 0 && state.raiseAt == kernel_state::RaisePoint::Construction) {
    state.fired = true;
    sys_error(state.raiseCode);
  }
}

outcome api_del_entity_list(ENTITY_LIST& list, api_options* /*options*/) {
  ++kernel_state::deletionCalls;
  auto& state = faults();
  if (++state.calls == state.failCall) {
    state.fired = true;
    return outcome(state.callError);
  }
  for (int i = 0; i < list.count(); ++i) {
    if (list[i] == nullptr) continue;
    if (kernel_state::is_live(list[i])) {
      delete list[i];
    } else {
      ++kernel_state::deletionsOfDead;
    }
  }
  list.clear();
  return outcome();
}

void api_bb_begin(int /*nested*/) {
  boards().begins.push_back(boards().made.size());
  ++context().openBoards;
}

void api_bb_end(outcome& result, int /*nested*/, int stopLogging) {
  auto& [made, begins] = boards();
  if (begins.empty()) {
    --context().openBoards;  // an end without its begin shows in the count
    return;
  }
  const std::size_t begin = begins.back();
  begins.pop_back();
  --context().openBoards;
  if (result.error_number() != 0) {
    while (made.size() > begin) {
      ENTITY* entity = made.back();
      made.pop_back();
      if (kernel_state::is_live(entity)) delete entity;
    }
  }
  if (begins.empty()) made.clear();
  if (stopLogging != 0) context().logging = 0;
}

void update_from_bb() {
  auto& state = faults();
  if (state.raiseCode != 0 && state.raiseAt == kernel_state::RaisePoint::Update) {
    state.fired = true;
    sys_error(state.raiseCode);
  }
}

int logging_opt_on() { return context().logging; }
void set_logging(int on) { context().logging = on; }

#pragma once

#include <atomic>
#include <cstddef>

class ENTITY;

// The state behind the kernel: what it counts and what it is told to get wrong. The plug-in may not
// use it.
namespace kernel_state {

extern std::atomic<long> liveEntities;
extern std::atomic<long> trackedBytes;
extern std::atomic<long> managerStarts;
extern std::atomic<long> deletionsOfDead;
// Calls of api_del_entity_list.
extern std::atomic<long> deletionCalls;
// The memory type that the last tracked allocation asked for.
extern std::atomic<int> lastMemoryType;

// Where inside a frame a kernel exception is raised.
enum class RaisePoint { Construction, Update };

// All per thread.
struct Faults {
  long calls = 0;              // fallible kernel calls so far
  long failCall = 0;           // the one that fails; 0: none
  int callError = 0;           // its error number
  bool failAfterWork = false;  // it does its work all the same
  long allocations = 0;
  long failAllocation = 0;
  int raiseCode = 0;  // 0: nothing is raised
  RaisePoint raiseAt = RaisePoint::Update;
  int raiseAgainCode = 0;  // raised when the error info is converted
  bool interrupted = false;
  bool fired = false;
};
Faults& faults();

struct Context {
  long openBoards = 0;
  long errorDepth = 0;
  int logging = 1;
  long problemsPassedOn = 0;  // results to which a call passed its own problems on
};
Context& context();

// True while the entity has not been deleted.
bool is_live(const ENTITY* entity);

}  // namespace kernel_state

#pragma once

namespace kernel_state {
struct Faults;
}

// What tests read from the platform and what they make go wrong.
namespace standin {

// What the platform counts. Boards, error depth and logging are the calling thread's.
struct Counters {
  long liveEntities;
  long trackedBytes;
  long managerStarts;  // starts not yet stopped
  long openBoards;
  long errorDepth;
  int logging;
  int errorMarkState;
  long deletionCalls;
  long deletionsOfDead;
  long threadCallsDisabled;
  int lastMemoryType;  // of the tracked allocations
};
Counters Count();

// Faults of the calling thread, set by the factories below for as long as the object lives. One at
// a time.
class Fault {
 public:
  // The n-th fallible kernel call from now on fails with an error number; with `afterWork` it does
  // its work all the same.
  static Fault KernelCall(long n, int errorNumber, bool afterWork = false);
  // The n-th tracked allocation from now on yields nothing.
  static Fault TrackedAllocation(long n);
  // A kernel exception inside the next frames, when the board is brought up to date.
  static Fault Raise(int code);
  // As Raise, and one more exception when its error info is converted.
  static Fault RaiseTwice(int code, int again);
  // No fault: counts calls and allocations from now on.
  static Fault None();

  Fault(const Fault&) = delete;
  Fault& operator=(const Fault&) = delete;
  ~Fault();

  bool HasFired() const;
  // Fallible kernel calls and tracked allocations since the fault was set.
  long Calls() const;
  long Allocations() const;
  // Lets the kernel report an interrupt too.
  void Interrupt();

 private:
  explicit Fault(const kernel_state::Faults& faults);
};

// Sets a framework switch while it lives.
class UseStdHash {
 public:
  explicit UseStdHash(bool use);
  UseStdHash(const UseStdHash&) = delete;
  UseStdHash& operator=(const UseStdHash&) = delete;
  ~UseStdHash();
};
class PropagateAccessViolations {
 public:
  PropagateAccessViolations();
  PropagateAccessViolations(const PropagateAccessViolations&) = delete;
  PropagateAccessViolations& operator=(const PropagateAccessViolations&) = delete;
  ~PropagateAccessViolations();
};

}  // namespace standin

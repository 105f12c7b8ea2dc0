#pragma once

// Counts the kernel API frames that are open on this thread while it lives.
class KOVAQalOrvoDepthCounter {
 public:
  KOVAQalOrvoDepthCounter();
  KOVAQalOrvoDepthCounter(const KOVAQalOrvoDepthCounter&) = delete;
  KOVAQalOrvoDepthCounter& operator=(const KOVAQalOrvoDepthCounter&) = delete;
  ~KOVAQalOrvoDepthCounter();

  // Open frames of this thread, the caller's own included: 1 in the outermost frame.
  static int GetCurrentDepthCount();

  // True when an access violation in the kernel is to leave a frame as KOVAAbortException.
  // DEFAULT: false.
  static bool ShouldPropagateAccessViolations();
};

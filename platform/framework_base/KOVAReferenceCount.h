#pragma once

#include <atomic>

// Root of the framework's shared objects. An object starts with no reference; whoever lowers the
// last one deletes it. An object that nobody raised is deleted by its one owner.
class KOVAReferenceCount {
 public:
  KOVAReferenceCount() = default;
  KOVAReferenceCount(const KOVAReferenceCount&) = delete;
  KOVAReferenceCount& operator=(const KOVAReferenceCount&) = delete;
  virtual ~KOVAReferenceCount();

  // Counts one reference more.
  virtual void RaiseReference();
  // Counts one reference less; the last one deletes the object.
  virtual void LowerReference();

 private:
  std::atomic<long> references_{0};
};

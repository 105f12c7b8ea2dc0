#pragma once

#include <exception>

// The framework's exceptions for conditions that no result code can carry on from.
class KOVAUnrecoverableError : public std::exception {
 public:
  ~KOVAUnrecoverableError() override;
};

// The kernel ran out of memory.
class KOVAAllocException : public KOVAUnrecoverableError {
 public:
  ~KOVAAllocException() override;
  // One line of text.
  const char* what() const noexcept override;
};

// The kernel met an access violation and the framework asked to be told.
class KOVAAbortException : public KOVAUnrecoverableError {
 public:
  ~KOVAAbortException() override;
  // One line of text.
  const char* what() const noexcept override;
};

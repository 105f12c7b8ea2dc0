#pragma once

// The framework's result value: a long code, 0 for success.
class KOVAResult {
 public:
  // Zero is success; every other code a failure.
  explicit constexpr KOVAResult(long code = 0) noexcept : code_(code) {}

  // Takes another code.
  KOVAResult& operator=(long code) noexcept {
    code_ = code;
    return *this;
  }

  // True if the code is 0.
  constexpr bool IsSuccess() const noexcept { return code_ == 0; }
  // The code.
  constexpr long GetCode() const noexcept { return code_; }

  // Success when either side is a success; otherwise this keeps its own code.
  KOVAResult operator|=(const KOVAResult& other) noexcept {
    if (other.IsSuccess()) code_ = 0;
    return *this;
  }

  // Success when both sides are successes; otherwise the first failure's code stays.
  KOVAResult& operator&=(const KOVAResult& other) noexcept {
    if (IsSuccess()) code_ = other.code_;
    return *this;
  }

 private:
  long code_;
};

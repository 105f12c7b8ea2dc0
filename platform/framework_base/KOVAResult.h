#pragma once

// The framework's result value: a long code, 0 for success.
class KOVAResult {
 public:
  explicit constexpr KOVAResult(long code = 0) noexcept : code_(code) {}

  KOVAResult& operator=(long code) noexcept {
    code_ = code;
    return *this;
  }

  constexpr bool IsSuccess() const noexcept { return code_ == 0; }
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

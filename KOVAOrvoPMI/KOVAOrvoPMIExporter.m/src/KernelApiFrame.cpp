#include "KernelApiFrame.h"

#include "KernelMemoryManager.h"
#include "framework_base/KOVAExceptions.h"
#include "framework_base/KOVAQalOrvoDepthCounter.h"
#include "orvo_kernel/api.h"
#include "orvo_kernel/errors.h"

namespace {

constexpr int kOutOfMemoryMessage = 8;
constexpr int kAccessViolationMessage = 15;

// The open bulletin board and error context. Closes both, also when an exception leaves.
class Bracket {
 public:
  explicit Bracket(outcome& result) : result_(result), logging_(logging_opt_on()) {
    api_bb_begin(1);
    error_begin();
    mark_ = get_error_mark();
    get_error_mark().state = 1;
    ORVOExceptionCheck("API");
  }
  Bracket(const Bracket&) = delete;
  Bracket& operator=(const Bracket&) = delete;
  ~Bracket() {
    api_bb_end(result_, 1, logging_ == 0 ? 1 : 0);
    set_logging(logging_);
    get_error_mark() = mark_;
    error_end();
  }

 private:
  outcome& result_;
  int logging_;
  error_mark mark_;
};

// What is known of the kernel error that a frame caught.
struct KernelError {
  int number = 0;
  error_info_base* info = nullptr;
};

// Runs the body between begin and end, with a kernel exception turned into the result.
void RunBracketed(const std::function<ENTITY*()>& body, ENTITY*& product, outcome& result,
                  orvo_exception& holder, KernelError& error) {
  const Bracket bracket(result);
  try {
    product = body();
    if (result.error_number() == 0) update_from_bb();
  } catch (orvo_exception& raised) {
    try {
      error = {raised.error_number(), raised.info()};
      holder.set_info(error.info, __FILE__, __LINE__);
      result = outcome(error.number, base_to_err_info(error.info));
    } catch (orvo_exception& second) {
      if (error.number == 0) error = {second.error_number(), second.info()};
    }
  }
}

// Lets the framework decide what leaves an outermost frame; a nested one hands the error on.
template <typename FrameworkException>
void Leave(int errorNumber) {
  if (KOVAQalOrvoDepthCounter::GetCurrentDepthCount() <= 1) throw FrameworkException();
  sys_error(errorNumber);
}

}  // namespace

void RunInKernelApiFrame(const std::function<ENTITY*()>& body, ENTITY*& product) {
  product = nullptr;
  const KOVAQalOrvoDepthCounter depth;
  set_global_error_info(nullptr);
  outcome result(0, nullptr);
  problems_list_prop problems;
  {
    orvo_exception holder(0, nullptr, nullptr, 0);
    KernelError error;
    RunBracketed(body, product, result, holder, error);
    if (result.error_number() != 0) product = nullptr;  // its board was rolled back
    if (orvo_interrupted()) sys_error(error.number, error.info);
  }
  problems.process_result(result, static_cast<problems_list_prop_type>(1), 0);

  const int number = result.error_number();
  if (number == 0) return;
  if (number == memory_manager_messages.message_code(kOutOfMemoryMessage)) {
    Leave<KOVAAllocException>(number);
  }
  if (KOVAQalOrvoDepthCounter::ShouldPropagateAccessViolations() &&
      number == error_base_messages.message_code(kAccessViolationMessage)) {
    Leave<KOVAAbortException>(number);
  }
}

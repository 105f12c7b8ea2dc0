#include "orvo_kernel/errors.h"

#include "orvo_kernel/internals.h"

using kernel_state::context;
using kernel_state::faults;

namespace {

// The thread's last error.
error_info& last_error() {
  thread_local error_info info;
  return info;
}

error_info*& global_error() {
  thread_local error_info* info = nullptr;
  return info;
}

}  // namespace

const message_module memory_manager_messages(1000);
const message_module error_base_messages(2000);

error_info_base::~error_info_base() = default;

void sys_error(int errorNumber, error_info_base* info) {
  if (errorNumber == 0) return;
  throw orvo_exception(errorNumber, info != nullptr ? info : &last_error(), nullptr, 0);
}

error_info* base_to_err_info(error_info_base* info) {
  const int code = faults().raiseAgainCode;
  if (code != 0) {
    faults().raiseAgainCode = 0;
    sys_error(code);
  }
  return dynamic_cast<error_info*>(info);
}

void set_global_error_info(error_info* info) { global_error() = info; }

error_mark& get_error_mark() {
  thread_local error_mark mark;
  return mark;
}

void error_begin() { ++context().errorDepth; }
void error_end() { --context().errorDepth; }

void ORVOExceptionCheck(const char* /*where*/) {}

bool orvo_interrupted() { return faults().interrupted; }

void problems_list_prop::process_result(outcome& /*result*/, problems_list_prop_type type,
                                        int depth) {
  if (type == problems_list_propagate && depth == 0) ++context().problemsPassedOn;
}

#pragma once

// What the kernel knows about an error. Owned by the kernel, valid until the thread's next error.
struct error_info_base {
  virtual ~error_info_base();
};
struct error_info : error_info_base {};

// The answer of a kernel call: error number 0 is success.
class outcome {
 public:
  explicit outcome(int errorNumber = 0, error_info* info = nullptr)
      : errorNumber_(errorNumber), info_(info) {}

  int error_number() const { return errorNumber_; }
  error_info* info() const { return info_; }

 private:
  int errorNumber_;
  error_info* info_;
};

// The kernel's own exception.
class orvo_exception {
 public:
  orvo_exception(int errorNumber, error_info_base* info, const char* file, int line)
      : errorNumber_(errorNumber), info_(info), file_(file), line_(line) {}

  int error_number() const { return errorNumber_; }
  error_info_base* info() const { return info_; }
  const char* file() const { return file_; }
  int line() const { return line_; }
  // Replaces what is known about the error, and where it was caught.
  void set_info(error_info_base* info, const char* file, int line) {
    info_ = info;
    file_ = file;
    line_ = line;
  }

 private:
  int errorNumber_;
  error_info_base* info_;
  const char* file_;
  int line_;
};

// Raises orvo_exception; 0 raises nothing.
void sys_error(int errorNumber, error_info_base* info = nullptr);

// The error info in the form that an outcome takes. May raise a kernel exception.
error_info* base_to_err_info(error_info_base* info);

// Replaces the thread's global error info.
void set_global_error_info(error_info* info);

// The error numbers of one subsystem of the kernel.
class message_module {
 public:
  explicit constexpr message_module(int base) : base_(base) {}
  // The error number of the module's n-th message.
  int message_code(int n) const { return base_ + n; }

 private:
  int base_;
};
// 8: out of memory.
extern const message_module memory_manager_messages;
// 15: access violation.
extern const message_module error_base_messages;

// Where the kernel goes back to when it raises an error on this thread.
struct error_mark {
  int state = 0;  // 1 while a frame is open
};
error_mark& get_error_mark();

// Opens and closes a level of the thread's error context.
void error_begin();
void error_end();

// Looks for errors left pending in the operating system's exception state.
void ORVOExceptionCheck(const char* where);

// True if the user asked the kernel to stop.
bool orvo_interrupted();

enum problems_list_prop_type { problems_list_none, problems_list_propagate };

// Carries problems found inside a call into the call's outcome.
class problems_list_prop {
 public:
  problems_list_prop() = default;
  problems_list_prop(const problems_list_prop&) = delete;
  problems_list_prop& operator=(const problems_list_prop&) = delete;
  ~problems_list_prop() = default;

  void process_result(outcome& result, problems_list_prop_type type, int depth);
};

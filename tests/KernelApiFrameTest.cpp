#include "KernelApiFrame.h"

#include <functional>
#include <new>
#include <optional>

#include "Matchers.h"
#include "framework_base/KOVAExceptions.h"
#include "framework_base/KOVAQalOrvoDepthCounter.h"
#include "orvo_kernel/api.h"
#include "orvo_kernel/errors.h"
#include "orvo_kernel/internals.h"

namespace {

using kernel_state::RaisePoint;
using standin::Fault;
using standin::Part;

const int kMemoryError = memory_manager_messages.message_code(8);
const int kAccessViolation = error_base_messages.message_code(15);
constexpr int kOtherError = 42;

// How a frame or a scan ends.
enum class End { Normal, AllocException, AbortException, KernelException, BadAlloc, Other };
std::ostream& operator<<(std::ostream& out, End end) { return out << static_cast<int>(end); }

// `error` becomes the number of a kernel exception.
End EndOf(const std::function<void()>& work, int& error) {
  try {
    work();
  } catch (const KOVAAllocException&) {
    return End::AllocException;
  } catch (const KOVAAbortException&) {
    return End::AbortException;
  } catch (const orvo_exception& exception) {
    error = exception.error_number();
    return End::KernelException;
  } catch (const std::bad_alloc&) {
    return End::BadAlloc;
  } catch (...) {
    return End::Other;
  }
  return End::Normal;
}

// What the framework is told of a kernel error.
struct Translation {
  int error;
  bool nested, propagate;
  End end;
};
const Translation kTranslations[] = {
    {kMemoryError, false, false, End::AllocException},
    {kMemoryError, false, true, End::AllocException},
    {kMemoryError, true, false, End::KernelException},
    {kAccessViolation, false, true, End::AbortException},
    {kAccessViolation, true, true, End::KernelException},
    {kAccessViolation, false, false, End::Normal},
    {kAccessViolation, true, false, End::Normal},
    {kOtherError, false, true, End::Normal},
    {kOtherError, true, true, End::Normal},
    {memory_manager_messages.message_code(15), false, true, End::Normal},
    {error_base_messages.message_code(8), false, true, End::Normal},
};
// Runs work under a translation's circumstances and checks its end.
void ExpectEnd(const Translation& row, const std::function<void()>& work) {
  std::optional<KOVAQalOrvoDepthCounter> outer;
  if (row.nested) outer.emplace();
  std::optional<standin::PropagateAccessViolations> propagate;
  if (row.propagate) propagate.emplace();
  int error = 0;
  EXPECT_EQ(EndOf(work, error), row.end) << row.error << row.nested << row.propagate;
  EXPECT_EQ(error, row.end == End::KernelException ? row.error : 0);
  EXPECT_EQ(KOVAQalOrvoDepthCounter::GetCurrentDepthCount(), row.nested ? 1 : 0);
}

// The thread's logging and error mark, set as no frame sets them, while it lives.
struct Settings {
  explicit Settings(int logging) { Set(logging, 7); }
  ~Settings() { Set(1, 0); }
  static void Set(int logging, int state) {
    set_logging(logging);
    get_error_mark().state = state;
  }
};

// Runs a frame whose body makes something; whether that is there afterwards.
bool RunFrame(const std::function<void()>& body) {
  char made = 0;
  ENTITY* product = nullptr;
  const auto make = [&] {
    body();
    return reinterpret_cast<ENTITY*>(&made);
  };
  RunInKernelApiFrame(make, product);
  return product == reinterpret_cast<ENTITY*>(&made);
}

PLANE* MakePlane() { return new (1, __FILE__, __LINE__) PLANE(plane()); }

// --- One frame -----------------------------------------------------------------------------------

TEST(KernelApiFrame, OpensBoardAndErrorContextForItsBodyAndClosesThem) {
  for (const int logging : {0, 1, 5}) {
    const Settings settings(logging);
    const auto before = Balance();
    const long passedOn = kernel_state::context().problemsPassedOn;
    EXPECT_TRUE(RunFrame([&] {
      EXPECT_EQ(standin::Count().openBoards, 1);
      EXPECT_EQ(standin::Count().errorDepth, 1);
      EXPECT_EQ(standin::Count().errorMarkState, 1);
      EXPECT_EQ(KOVAQalOrvoDepthCounter::GetCurrentDepthCount(), 1);
      Settings::Set(9, 3);
    }));
    EXPECT_EQ(Balance(), before) << logging;
    EXPECT_EQ(kernel_state::context().problemsPassedOn, passedOn + 1);
    EXPECT_EQ(KOVAQalOrvoDepthCounter::GetCurrentDepthCount(), 0);
  }
}

// With no outcome to report, the frame ends as if nothing had happened, but for an interrupt.
TEST(KernelApiFrame, KeepsTheFirstErrorWhenTheOutcomeCannotBeBuilt) {
  const auto before = Balance();
  for (const bool interrupted : {false, true}) {
    Fault fault = Fault::RaiseTwice(kMemoryError, kOtherError);
    if (interrupted) fault.Interrupt();
    ExpectEnd({kMemoryError, false, true, interrupted ? End::KernelException : End::Normal},
              [] { EXPECT_TRUE(RunFrame([] {})); });
    EXPECT_TRUE(fault.HasFired());
    EXPECT_EQ(Balance(), before);
  }
}

TEST(KernelApiFrame, LetsAnyErrorOutOnAnInterrupt) {
  const auto before = Balance();
  for (const int error : {kOtherError, kMemoryError, kAccessViolation}) {
    Fault fault = Fault::None();
    fault.Interrupt();
    ExpectEnd({error, false, true, End::KernelException}, [&] {
      RunFrame([&] {
        MakePlane();
        sys_error(error);
      });
    });
    EXPECT_EQ(Balance(), before);
  }
}

TEST(KernelApiFrame, ClosesBehindWhateverElseItsBodyThrows) {
  for (const int logging : {0, 5}) {
    const Settings settings(logging);
    const auto before = Balance();
    ExpectEnd({0, false, false, End::BadAlloc}, [] {
      RunFrame([] {
        set_logging(9);
        throw std::bad_alloc();
      });
    });
    ExpectEnd({0, true, false, End::Other}, [] { RunFrame([] { throw 5; }); });
    EXPECT_EQ(Balance(), before);
  }
}

// --- The frame around a view's plane -------------------------------------------------------------

// Raises a kernel error in every later frame once the scan has come to it.
class Trap : public FACE {
 public:
  Trap(int error, RaisePoint at) : FACE(std::vector<EDGE*>()), error_(error), at_(at) {}
  int identity(int level = 0) const override {
    kernel_state::faults().raiseCode = error_;
    kernel_state::faults().raiseAt = at_;
    return FACE::identity(level);
  }

 private:
  int error_;
  RaisePoint at_;
};

TEST(ViewPlane, ThatTheKernelFailsToMakeIsTranslatedAndLeavesNothing) {
  for (const RaisePoint at : {RaisePoint::Construction, RaisePoint::Update}) {
    for (const Translation& row : kTranslations) {
      Part part;
      auto& first = part.Make<KOVAPMI_DIMENSION>();  // before the error, and after it
      part.Place(first, {}, {1, 0, 0}, {0, 0, 1});
      part.Group(6, {&first});
      auto& trap = part.Make<Trap>(row.error, at);
      part.GetDocument().Add(trap);
      auto& second = part.AddText(trap, L"placed in vain");
      auto& third = part.AddText(trap, L"placed in vain");
      for (auto* text : {&second, &third}) part.Place(*text, {}, {1, 0, 0}, {0, 0, 1});
      part.Group(6, {&first});
      const Settings settings(row.nested ? 0 : 5);
      const auto before = Balance();
      const Fault fault = Fault::None();
      ExpectEnd(row, [&] {
        const auto exporter = Export(part);
        EXPECT_EQ(standin::Count().liveEntities, before[0] + 1);
        ASSERT_EQ(Views(*exporter).size(), 2u);
        EXPECT_EQ(Annotations(*exporter, Views(*exporter)[0]), Entities{&first});
        EXPECT_EQ(Annotations(*exporter, nullptr), (Entities{&second, &third, &first}));
        float depth = kUntouched;
        EXPECT_THAT(exporter->GetAnnotationZDepth(Naming(&first), depth), IsSuccess());
      });
      EXPECT_TRUE(fault.HasFired());
      EXPECT_EQ(Balance(), before) << row.error << static_cast<int>(at);
    }
  }
}

TEST(ViewPlane, IsOfTheMemoryTypeOfModels) {
  Part part;
  AddPlacedText(part);
  delete new (2, __FILE__, __LINE__) PLANE(plane());
  ASSERT_EQ(standin::Count().lastMemoryType, 2);
  Export(part);
  EXPECT_EQ(standin::Count().lastMemoryType, 1);
}

TEST(ViewPlane, WithoutStorageEndsTheScanWithBadAllocAndLeavesNoPlane) {
  for (const int logging : {0, 5}) {
    Part part;
    for (int i = 0; i < 5; ++i) AddPlacedText(part);
    const Settings settings(logging);
    const auto before = Balance();
    for (long n = 1; n <= 6; ++n) {
      const Fault fault = Fault::TrackedAllocation(n);
      ExpectEnd({0, false, false, n <= 5 ? End::BadAlloc : End::Normal}, [&] { Export(part); });
      EXPECT_EQ(fault.HasFired(), n <= 5);
      EXPECT_EQ(Balance(), before) << n;
    }
  }
}

TEST(ViewPlane, LeavesNothingWhenAnInterruptEndsTheScan) {
  Part part;
  AddPlacedText(part);
  const auto before = Balance();
  for (const int second : {0, kOtherError + 1}) {
    Fault fault = Fault::RaiseTwice(kOtherError, second);
    fault.Interrupt();
    ExpectEnd({kOtherError, false, false, End::KernelException}, [&] { Export(part); });
    EXPECT_EQ(Balance(), before) << second;
  }
  Fault fault = Fault::None();
  fault.Interrupt();
  EXPECT_EQ(is_PLANE(Views(*Export(part)).at(0)), 1);
}

}  // namespace

// The shared library as the framework meets it: by its path.
#ifndef _WIN32
#include <dlfcn.h>
#endif
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>

#include "framework_base/KOVAExceptions.h"
#include "framework_pmi/KOVAPMIExporter.h"
#include "orvo_kernel/errors.h"
#include "os_loader/loader.h"
#include "standin/Control.h"
#include "standin/Part.h"

namespace {

using standin::Fault;
using Factory = int (*)(KOVADocument*, KOVAPMIExporter**);

#ifdef _WIN32
constexpr int kCountedLoads = 0;  // the loader asked is the system's own
void* Open(const char* path) { return LoadLibraryA(path); }
void Close(void* library) { FreeLibrary(static_cast<HINSTANCE>(library)); }
void* Find(void* library, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HINSTANCE>(library), name));
}
#else
constexpr int kCountedLoads = 1;
void* Open(const char* path) { return dlopen(path, RTLD_NOW | RTLD_LOCAL); }
void Close(void* library) { dlclose(library); }
void* Find(void* library, const char* name) { return dlsym(library, name); }
#endif

struct Closer {
  void operator()(void* library) const { Close(library); }
};
using Library = std::unique_ptr<void, Closer>;

Library Load() { return Library(Open(PLUGIN_PATH)); }

template <typename Function>
Function Symbol(const Library& library, const char* name) {
  return reinterpret_cast<Function>(Find(library.get(), name));
}

TEST(Library, EverySourceUnitStartsTheMemoryManagerAndUnloadingStopsItAgain) {
  const long before = standin::Count().managerStarts;
  const long disabled = standin::Count().threadCallsDisabled;
  for (int round = 1; round <= 3; ++round) {
    const Library library = Load();
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(standin::Count().managerStarts, before + PLUGIN_SOURCE_COUNT);
    EXPECT_EQ(standin::Count().threadCallsDisabled, disabled + round * kCountedLoads);
  }
  EXPECT_EQ(standin::Count().managerStarts, before);
}

TEST(Library, LoadedUsedAndUnloadedAThousandTimesLeavesNothingBehind) {
  const standin::Counters before = standin::Count();
  for (int round = 0; round < 1000; ++round) {
    const Library library = Load();
    ASSERT_NE(library, nullptr);
    standin::Part part;
    part.Place(part.AddText(part.Face(), L"deburr"), {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
    KOVAPMIExporter* made = nullptr;
    ASSERT_EQ(Symbol<Factory>(library, "KOVACreateOrvoPMIExporter")(&part.GetDocument(), &made), 0);
    const std::unique_ptr<KOVAPMIExporter> exporter(made);
    int views = 0;
    exporter->GetAnnotationViewCount(KOVAIdentifier(), views);
    ASSERT_EQ(views, 1);
  }
  EXPECT_EQ(standin::Count().managerStarts, before.managerStarts);
  EXPECT_EQ(standin::Count().liveEntities, before.liveEntities);
  EXPECT_EQ(standin::Count().trackedBytes, before.trackedBytes);
}

TEST(Library, FactoryMakesAnExporterThatAnswersAndMarkerIsOne) {
  const Library library = Load();
  ASSERT_NE(library, nullptr);
  EXPECT_EQ(Symbol<int (*)()>(library, "MERIDAN_WORKS_RQF5_INTERNAL_KOVAOrvoPMIExporter")(), 1);
  const auto create = Symbol<Factory>(library, "KOVACreateOrvoPMIExporter");
  standin::Part part;
  part.AddText(part.Face(), L"deburr");
  KOVAPMIExporter* made = nullptr;
  ASSERT_EQ(create(&part.GetDocument(), &made), 0);
  const std::unique_ptr<KOVAPMIExporter> exporter(made);
  KOVAIdentifier view;
  KOVAIdentifier annotation;
  KOVAString text;
  EXPECT_TRUE(exporter->GetAnnotationView(KOVAIdentifier(), 0, view).IsSuccess());
  EXPECT_TRUE(exporter->GetViewAnnotation(view, 0, annotation).IsSuccess());
  EXPECT_TRUE(exporter->GetTextString(annotation, text).IsSuccess());
  EXPECT_EQ(std::wstring(text.GetText()), L"deburr");
  // One constant for all libraries, not a copy each.
  EXPECT_EQ(annotation.GetTypeName(), KOVAPMIExporter::KOVAPMITypeAnnotation);
}

TEST(Library, ThrowsWhatItsCallerCatchesByType) {
  const Library library = Load();
  ASSERT_NE(library, nullptr);
  const auto create = Symbol<Factory>(library, "KOVACreateOrvoPMIExporter");
  standin::Part part;
  part.Place(part.AddText(part.Face(), L"deburr"), {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
  KOVAPMIExporter* made = nullptr;
  const auto make = [&] { create(&part.GetDocument(), &made); };
  {
    const Fault fault = Fault::Raise(memory_manager_messages.message_code(8));
    EXPECT_THROW(make(), KOVAAllocException);
  }
  {
    Fault fault = Fault::Raise(42);
    fault.Interrupt();
    EXPECT_THROW(make(), orvo_exception);
  }
  const Fault fault = Fault::TrackedAllocation(1);
  EXPECT_THROW(make(), std::bad_alloc);
  EXPECT_EQ(made, nullptr);
}

}  // namespace

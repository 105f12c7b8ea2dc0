// The shared library as the framework meets it: by its path.
#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <memory>
#include <regex>
#include <set>
#include <string>

#include "framework_pmi/KOVAPMIExporter.h"
#include "standin/Control.h"
#include "standin/Part.h"

namespace {

using Factory = int (*)(KOVADocument*, KOVAPMIExporter**);

struct Closer {
  void operator()(void* library) const { dlclose(library); }
};
using Library = std::unique_ptr<void, Closer>;

Library Load() { return Library(dlopen(PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL)); }

template <typename Function>
Function Symbol(const Library& library, const char* name) {
  return reinterpret_cast<Function>(dlsym(library.get(), name));
}

// What a command prints, line by line.
std::set<std::string> LinesOf(const std::string& command) {
  const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::set<std::string> lines;
  std::array<char, 4096> line;
  while (fgets(line.data(), line.size(), pipe.get()) != nullptr) {
    lines.insert(std::string(line.data(), std::char_traits<char>::length(line.data()) - 1));
  }
  return lines;
}

TEST(Library, ExportsTheTwoClassesTheFactoryAndTheMarkerAlone) {
  const std::regex allowed(
      "(vtable for |typeinfo for |typeinfo name for )?KOVAOrvoPMI(Attribute)?Exporter(::.*)?");
  std::set<std::string> plain;
  bool exporterSeen = false;
  for (const std::string& line : LinesOf("nm -DC --defined-only --format=posix " PLUGIN_PATH)) {
    // The name, then its type, address and size.
    const std::string symbol =
        std::regex_replace(line, std::regex(" [A-Za-z] [0-9a-f]+ ?[0-9a-f]*$"), "");
    if (std::regex_match(symbol, allowed)) {
      exporterSeen = true;
    } else {
      plain.insert(symbol);
    }
  }
  EXPECT_TRUE(exporterSeen);
  EXPECT_THAT(plain,
              testing::UnorderedElementsAre("KOVACreateOrvoPMIExporter",
                                            "MERIDAN_WORKS_RQF5_INTERNAL_KOVAOrvoPMIExporter"));
}

TEST(Library, EverySourceUnitStartsTheMemoryManagerAndUnloadingStopsItAgain) {
  const long before = standin::Count().managerStarts;
  const long disabled = standin::Count().threadCallsDisabled;
  for (int round = 1; round <= 3; ++round) {
    const Library library = Load();
    ASSERT_NE(library, nullptr) << dlerror();
    EXPECT_EQ(standin::Count().managerStarts, before + PLUGIN_SOURCE_COUNT);
    EXPECT_EQ(standin::Count().threadCallsDisabled, disabled + round);
  }
  EXPECT_EQ(standin::Count().managerStarts, before);
}

TEST(Library, LoadedUsedAndUnloadedAThousandTimesLeavesNothingBehind) {
  const standin::Counters before = standin::Count();
  for (int round = 0; round < 1000; ++round) {
    const Library library = Load();
    ASSERT_NE(library, nullptr) << dlerror();
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
  ASSERT_NE(library, nullptr) << dlerror();
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
}

}  // namespace

#include <clocale>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "ReferenceIndex.h"

namespace {

using standin::Edit;
using standin::Fault;
using standin::Part;

const QENvector kAlongX{1, 0, 0}, kUp{0, 0, 1};

Entities Callouts(KOVAOrvoPMIExporter& exporter, ENTITY& dimension) {
  Entities callouts;
  KOVAIdentifier callout;
  const KOVAIdentifier naming = Naming(&dimension);
  for (int i = 0; exporter.GetCalloutAnnotationAt(naming, i, callout).IsSuccess(); ++i) {
    EXPECT_THAT(callout, Consists(callout.GetNativeObject(), nullptr, nullptr, nullptr));
    callouts.push_back(EntityOf(callout));
  }
  EXPECT_EQ(CountFrom(exporter, &KOVAPMIExporter::GetCalloutAnnotationCount, naming),
            Answer(0, callouts.size()));
  return callouts;
}

// --- Identifiers ---------------------------------------------------------------------------------

TEST(Records, CarryTheComponentsOfTheirKind) {
  Part part;
  ENTITY* const kNatives[] = {&AddPlacedText(part), &part.AddText(part.Face(), L"")};
  const auto exporter = Export(part);
  KOVAIdentifier view, annotation;
  for (int i = 0; i < 2; ++i) {
    EXPECT_THAT(exporter->GetAnnotationView(SentinelIdentifier(), i, view), IsSuccess());
    EXPECT_EQ(is_PLANE(EntityOf(view)), i == 0 ? 1 : 0);
    EXPECT_THAT(view,
                Consists(i == 0 ? view.GetNativeObject() : nullptr,
                         KOVAPMIExporter::KOVAPMITypeAnnotationView, exporter.get(), "ENTITY"));
    EXPECT_THAT(exporter->GetViewAnnotation(view, 0, annotation), IsSuccess());
    EXPECT_THAT(annotation, Consists(kNatives[i], KOVAPMIExporter::KOVAPMITypeAnnotation,
                                     exporter.get(), "ENTITY"));
    for (const int index : {0, -3, 9}) {
      KOVAIdentifier text = SentinelIdentifier();
      EXPECT_THAT(exporter->GetAnnotationText(annotation, index, text), IsSuccess());
      EXPECT_THAT(text, Consists(kNatives[i], KOVAPMIExporter::KOVAPMITypeText, nullptr, "ENTITY"));
    }
  }
}

// The map's own order tells which storage it has and how large it was made.
TEST(Records, AreKeptInMapsForTwelveThatFollowTheFrameworksHashOption) {
  Part part;
  auto& callout = part.MakeCallout(callout_feature_depth, 3);
  for (int i = 0; i < 30; ++i) {
    part.Place(part.AddDimension({&callout}, dim_linear, dim_sub_width, 1), {}, kAlongX, kUp);
  }
  const auto orderOf = [](const IdentifierHashMap& map) {
    Entities keys;
    map.Walk([&](const KOVAIdentifier& key, const auto&) {
      keys.push_back(EntityOf(key));
      return true;
    });
    return keys;
  };
  for (const bool standard : {false, true}) {
    const standin::UseStdHash form(standard);
    const auto exporter = Export(part);
    IdentifierHashMap views(12, true), dimensions(12, true);
    for (const ENTITY* view : Views(*exporter)) {
      views.Add(Naming(const_cast<ENTITY*>(view)), {});
      dimensions.Add(Naming(const_cast<ENTITY*>(Annotations(*exporter, view).at(0))), {});
    }
    EXPECT_EQ(orderOf(ExporterInsides::Views(*exporter)), orderOf(views));
    EXPECT_EQ(orderOf(ExporterInsides::Callouts(*exporter)), orderOf(dimensions));
  }
}

// --- Repeated keys -------------------------------------------------------------------------------

// A document that lists its entities twice.
class TwiceDocument : public standin::Document {
 public:
  void GetNativeEntityList(ENTITY_LIST& entities) override {
    ENTITY_LIST once;
    Document::GetNativeEntityList(once);
    for (int i = 0; i < 2 * once.count(); ++i) entities.add(once[i % once.count()], false);
  }
};

TEST(Records, OfAnEntityMetTwiceReplaceItsOwnersAndListItTwice) {
  Part part;
  BODY& dummy = part.WireBody(L"ATTRIB_XORVO_DUMMY_POINT_FOR_PMI");
  auto& text = part.AddText(dummy, L"");
  auto& placed = part.AddText(dummy, L"");
  part.Place(placed, {}, kAlongX, kUp);
  TwiceDocument document;
  document.Add(dummy);
  const Fault fault = Fault::KernelCall(1, 7);  // the name is not found the first time
  const auto exporter = Export(document);
  EXPECT_TRUE(fault.HasFired());
  EXPECT_EQ(Owners(*exporter, text), Entities());
  const Entities views = Views(*exporter);
  ASSERT_EQ(views.size(), 3u);
  EXPECT_EQ(views[0], nullptr);
  EXPECT_NE(views[1], views[2]);
  EXPECT_EQ(Annotations(*exporter), (Entities{&text, &text, &placed, &placed}));
}

TEST(Records, OfADimensionMetTwiceKeepItsFirstCallouts) {
  Part part;
  auto& first = part.MakeCallout(callout_feature_depth, 3);
  auto& second = part.MakeCallout(callout_feature_thread, 4);
  auto& dimension = part.AddDimension({&first, &second}, dim_diametral, dim_sub_diameter, 8);
  part.Place(first, {}, kAlongX, kUp);
  part.Place(dimension, {}, kAlongX, kUp);
  TwiceDocument document;
  document.Add(dimension);
  for (const bool afterWork : {false, true}) {
    // Three topology calls, then one for each mark; those of the second time find everything.
    const Fault fault = Fault::KernelCall(4, 7, afterWork);
    const auto exporter = Export(document);
    EXPECT_EQ(Callouts(*exporter, dimension), Entities{&second});
    EXPECT_EQ(Annotations(*exporter), (Entities{&dimension, &dimension}));
    const Placement placement(*exporter);
    EXPECT_EQ(placement.Answered(Naming(&first)), placement.Walked(&first));
  }
}

// --- Nested tolerances ---------------------------------------------------------------------------

TEST(Records, OfNestedTolerancesGoToAnyDepth) {
  constexpr std::size_t kDepth = 100'000;
  Part part;
  Entities chain;
  ENTITY* on = &part.Face();
  while (chain.size() < kDepth) {
    chain.push_back(on = &part.AddGeometricTolerance(*on, tol_position, 1));
  }
  part.Place(static_cast<ATTRIB_KOVAPMI_GEOM_TOL&>(*on), {}, kAlongX, kUp);
  const auto exporter = Export(part);
  EXPECT_EQ(Annotations(*exporter), chain);
  EXPECT_EQ(Views(*exporter).size(), 2u);
  EXPECT_EQ(Owners(*exporter, *on), Entities{chain[kDepth - 2]});
}

// --- Navigation ----------------------------------------------------------------------------------

TEST(Navigation, FailsOutsideItsListsAndTouchesNothingButTheCountOfAnUnknownView) {
  Part part;
  part.AddText(part.Face(), L"");
  auto& placed = AddPlacedText(part);
  part.AddText(part.Face(), L"");
  const auto exporter = Export(part), other = Export(part);
  EXPECT_EQ(CountFrom(*exporter, &KOVAPMIExporter::GetAnnotationViewCount, SentinelIdentifier()),
            Answer(0, 2));
  KOVAIdentifier null, plane, foreign, out = SentinelIdentifier();
  EXPECT_THAT(exporter->GetAnnotationView(out, -1, out), FailsWith(kFailure));
  EXPECT_THAT(exporter->GetAnnotationView(out, 2, out), FailsWith(kFailure));
  exporter->GetAnnotationView(KOVAIdentifier(), 0, null);
  exporter->GetAnnotationView(KOVAIdentifier(), 1, plane);
  other->GetAnnotationView(KOVAIdentifier(), 1, foreign);
  const std::pair<KOVAIdentifier, Answer> kCounts[] = {
      {null, {0, 2}},           {KOVAIdentifier(), {0, 2}},
      {plane, {0, 1}},          {Naming(plane.GetNativeObject()), {0, 1}},
      {foreign, {kFailure, 0}}, {Naming(&placed), {kFailure, 0}}};
  for (const auto& [view, answer] : kCounts) {
    EXPECT_EQ(CountFrom(*exporter, &KOVAPMIExporter::GetViewAnnotationCount, view), answer);
    EXPECT_THAT(exporter->GetViewAnnotation(view, -1, out), FailsWith(kFailure));
    EXPECT_THAT(exporter->GetViewAnnotation(view, answer.second, out), FailsWith(kFailure));
  }
  EXPECT_THAT(out, IsSentinel());
}

// --- Properties ----------------------------------------------------------------------------------

TEST(Properties, AreHiddenOnlyWhenTheModelSaysSo) {
  Part part;
  FACE &plain = part.Face(), &hidden = part.Face(), &shown = part.Face();
  part.Hide(hidden);
  part.Integer(shown, "show", -1);
  const auto exporter = Export(part);
  for (FACE* text : {&plain, &hidden, &shown}) {
    for (bool answer : {false, true}) {
      EXPECT_THAT(exporter->IsAnnotationHidden(Naming(text), answer), IsSuccess());
      EXPECT_EQ(answer, text == &hidden);
    }
  }
}

// Texts in an encoding of two bytes for the first letter, and how the C locale reads the first.
#ifdef _WIN32  // which has no UTF-8
constexpr char kLocale[] = ".932", kText[] = "\x81\x7e 8", kCutText[] = "cut \x81";
constexpr wchar_t kWideText[] = L"\u00d7 8", kTextInC[] = L"\x81\x7e 8";
#else
constexpr char kLocale[] = "C.UTF-8", kText[] = "\u00d7 8 \U0001d54f", kCutText[] = "cut \xc3";
constexpr wchar_t kWideText[] = L"\u00d7 8 \U0001d54f", kTextInC[] = L"";  // no text at all
#endif

TEST(Properties, ReadWideAndNarrowNamesOfAnyLength) {
  const std::wstring untouched = SentinelString().GetText();
  Part part;
  const auto wide = [&](const wchar_t* name) {
    return part.Make<ATTRIB_GEN_WSTRING>(&part.Face(), "ATTRIB_XORVO_NAME", name).owner();
  };
  const auto narrow = [&](const char* name) {
    return part.Make<ATTRIB_GEN_STRING>(&part.Face(), "ATTRIB_XORVO_NAME", name).owner();
  };
  std::string twoBytesEach;
  for (int i = 0; i < 2000; ++i) twoBytesEach.append(kText, 2);
  const std::vector<std::pair<ENTITY*, std::wstring>> kNames = {
      {wide(L"Hole \u00d7 8 \U0001d54f"), L"Hole \u00d7 8 \U0001d54f"},
      {wide(std::wstring(5000, L'w').c_str()), std::wstring(5000, L'w')},
      {wide(L""), untouched},
      {wide(nullptr), untouched},
      {&part.Face(), untouched},
      {narrow(kText), kWideText},
      {narrow(std::string(1023, 'n').c_str()), std::wstring(1023, L'n')},
      {narrow(std::string(1024, 'n').c_str()), std::wstring(1024, L'n')},
      {narrow(twoBytesEach.c_str()), std::wstring(2000, L'\u00d7')},
      {narrow(""), L""},
      {narrow(kCutText), L""},
      {narrow(nullptr), untouched}};
  const auto exporter = Export(part);
  const auto expectName = [&](ENTITY* entity, const std::wstring& expected) {
    KOVAString name = SentinelString();
    EXPECT_THAT(exporter->GetAnnotationName(Naming(entity), name), IsSuccess());
    EXPECT_THAT(name, Reads(expected)) << expected.size();
  };
  ASSERT_NE(std::setlocale(LC_ALL, kLocale), nullptr);
  for (const auto& [entity, expected] : kNames) expectName(entity, expected);
  for (const bool afterWork : {false, true}) {  // a failed lookup spoils a narrow name alone
    for (const std::size_t i : {0u, 5u}) {
      const Fault fault = Fault::KernelCall(1, 7, afterWork);
      expectName(kNames[i].first, i == 0 && afterWork ? kNames[i].second : untouched);
    }
  }
  std::setlocale(LC_ALL, "C");
  expectName(kNames[5].first, kTextInC);
}

// A frame by its C++ class alone.
class NoFrame : public KOVAPMI_DRF {
  int identity(int level = 0) const override { return level <= 1 ? FACE_TYPE : -1; }
};

TEST(Properties, NameTheReferenceFrameOfARow) {
  Part part;
  FACE& face = part.Face();
  auto& tolerance = part.AddGeometricTolerance(face, tol_position, 1);
  auto& frame = part.Make<Derived<KOVAPMI_DRF>>();
  Edit(frame).note = L"A|B";
  Edit(part.AddRow(tolerance, 2)).frame = &frame;
  Edit(part.AddRow(tolerance, 3)).frame = &part.Make<NoFrame>();
  Edit(tolerance).rows.push_back(nullptr);
  const auto exporter = Export(part);
  KOVAString note = SentinelString();
  KOVAIdentifier out = SentinelIdentifier();
  for (const int row : {-1, 0, 2, 3, 4}) {
    EXPECT_THAT(exporter->GetAnnotationAssociatedRefFrame(Naming(&tolerance), row, note, out),
                FailsWith(kFailure));
  }
  EXPECT_THAT(exporter->GetAnnotationAssociatedRefFrame(Naming(&face), 0, note, out),
              FailsWith(kFailure));
  EXPECT_THAT(note, Reads(L"untouched"));
  EXPECT_THAT(out, IsSentinel());
  EXPECT_THAT(exporter->GetAnnotationAssociatedRefFrame(Naming(&tolerance), 1, note, out),
              IsSuccess());
  EXPECT_THAT(note, Reads(L"A|B"));
  const KOVAIdentifier rest = SentinelIdentifier();
  EXPECT_THAT(out, Consists(&frame, KOVAPMIExporter::KOVAPMITypeDatumRef, rest.GetRepresentation(),
                            rest.GetNativeTypeName()));
}

TEST(Properties, ReadPersistentAndModelIdentifiers) {
  Part part;
  FACE &face = part.Face(), &bare = part.Face(), &empty = part.Face(), &null = part.Face();
  part.Id(face, "F-17");
  part.Id(empty, "");
  part.Id(null, nullptr);
  const auto exporter = Export(part);
  part.GetDocument().SetAvailable(false);
  const auto uninitialised = Export(part);
  const auto expectId = [&](FACE& entity, const char* expected) {
    char sentinel = 0;
    char* id = &sentinel;
    EXPECT_THAT(uninitialised->GetEntityID(&entity, id),
                HasCode(expected == nullptr ? kFailure : 0));
    EXPECT_STREQ(id, expected);
    delete[] id;
  };
  const std::tuple<FACE*, const wchar_t*, const char*> kIds[] = {{&face, L"F-17", "F-17"},
                                                                 {&bare, L"untouched", nullptr},
                                                                 {&empty, L"", ""},
                                                                 {&null, L"untouched", nullptr}};
  for (const auto& [entity, pid, id] : kIds) {
    KOVAString persistent = SentinelString();
    EXPECT_THAT(exporter->GetPID(Naming(entity), persistent), IsSuccess());
    EXPECT_THAT(persistent, Reads(pid));
    expectId(*entity, id);
  }
  for (const bool afterWork : {false, true}) {
    const Fault fault = Fault::KernelCall(1, 7, afterWork);
    expectId(face, nullptr);
  }
}

}  // namespace

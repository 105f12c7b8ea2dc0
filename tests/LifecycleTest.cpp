#include <algorithm>
#include <array>
#include <cstring>
#include <tuple>
#include <type_traits>

#include "EveryKind.h"
#include "Matchers.h"
#include "orvo_kernel/internals.h"

namespace {

using standin::Fault;
using standin::Part;

// --- Factory -------------------------------------------------------------------------------------

TEST(Factory, MakesNothingWithoutADocument) {
  const auto before = Balance();
  KOVAPMIExporter* exporter = reinterpret_cast<KOVAPMIExporter*>(&exporter);
  EXPECT_EQ(KOVACreateOrvoPMIExporter(nullptr, &exporter), kFailure);
  EXPECT_EQ(exporter, nullptr);
  EXPECT_EQ(Balance(), before);
  EXPECT_EQ(MERIDAN_WORKS_RQF5_INTERNAL_KOVAOrvoPMIExporter(), 1);
}

// --- Guard ---------------------------------------------------------------------------------------

// A query's argument: the object asked about, or an output that holds what no query answers.
template <typename Argument>
struct Slot {
  using Bare = std::remove_cv_t<std::remove_reference_t<Argument>>;
  static constexpr bool kIsArray = std::is_same_v<Bare, float*> || std::is_same_v<Bare, double*>;
  static constexpr bool kIsObject =
      std::is_same_v<Argument, const KOVAIdentifier&> || std::is_same_v<Argument, KOVAIdentifier>;
  using Value = std::conditional_t<kIsArray, std::array<std::remove_pointer_t<Bare>, 9>, Bare>;

  explicit Slot(const KOVAIdentifier& object) {
    if constexpr (std::is_arithmetic_v<Bare> || std::is_enum_v<Bare>) value = static_cast<Bare>(1);
    if constexpr (kIsArray) value.fill(77);
    if constexpr (std::is_same_v<Bare, KOVAString>) value = SentinelString();
    if constexpr (std::is_same_v<Bare, KOVAIdentifier>) value = SentinelIdentifier();
    if constexpr (kIsObject) value = object;
  }
  decltype(auto) Pass() {
    std::memcpy(before.data(), Bytes(), sizeof value);
    if constexpr (kIsArray) return value.data();
    if constexpr (!kIsArray) return (value);
  }
  const void* Bytes() const { return &value; }
  bool IsUntouched() const { return std::memcmp(before.data(), Bytes(), sizeof value) == 0; }

  Value value{};
  std::array<char, sizeof(Value)> before{};
};

// Expects queries, asked about an object, to answer a code and touch nothing.
using E = KOVAPMIExporter;
using Id = const KOVAIdentifier&;
template <auto query, typename Class, typename... Arguments>
void ExpectFailure(E& exporter, Id object, long code, KOVAResult (Class::*)(Arguments...)) {
  std::tuple<Slot<Arguments>...> slots{Slot<Arguments>(object)...};
  const auto ask = [&](auto&... slot) { return (exporter.*query)(slot.Pass()...); };
  EXPECT_THAT(std::apply(ask, slots), HasCode(code)) << __PRETTY_FUNCTION__;
  const auto untouched = [](auto&... slot) { return (slot.IsUntouched() && ...); };
  EXPECT_TRUE(std::apply(untouched, slots)) << __PRETTY_FUNCTION__;
}
template <auto... queries>
void ExpectFailures(E& exporter, Id object, long code) {
  (ExpectFailure<queries>(exporter, object, code, queries), ...);
}

template <typename... Arguments>
using Form = KOVAResult (E::*)(Id, Arguments...);
using Type = KOVAPMIToleranceType&;
using Shape = KOVAPMIToleranceValueType&;
using D = double&;
constexpr Form<int, KOVAString&, KOVAIdentifier&> kFrame = &E::GetAnnotationAssociatedRefFrame;
constexpr Form<int, KOVAIdentifier&, KOVAIdentifier&, KOVAIdentifiers&> kDatumAt = &E::GetDatumAt;
constexpr Form<Type, bool&> kInfo = &E::GetToleranceInfo;
constexpr Form<KOVAString&, KOVAIdentifier&, bool> kOldFrame = &E::GetAnnotationAssociatedRefFrame;
constexpr Form<Type, Shape, D, D, D, D, D, D, bool&, KOVAString&, bool&> kOldInfo =
    &E::GetToleranceInfo;
constexpr Form<Type, Shape, D, D, D, D, D, D, bool&> kDefaultInfo = &E::GetToleranceInfo;
constexpr Form<int, KOVAIdentifier&, KOVAPMIToleranceModifier&, KOVAIdentifier&> kDefaultDatumAt =
    &E::GetDatumAt;

// Queries that need a native object; the others that look whether the exporter is initialised;
// those that never answer, here or in the framework.
constexpr auto kAboutObjects = &ExpectFailures<
    &E::GetPID, &E::GetViewCoordinateSystem, &E::GetAnnotationPositionInView,
    &E::GetAnnotationZDepth, &E::GetAnnotationName, &E::GetAnnotationType, &E::IsAnnotationHidden,
    &E::GetAnnotationLeaderCount, &E::GetAnnotationLeader, &E::GetAnnotationTextCount,
    &E::GetAnnotationText, &E::GetNumberOfEntitiesFromAnnotation, &E::GetEntityFromAnnotationAt,
    &E::GetCalloutAnnotationAt, &E::GetDimensionType, &E::GetDimensionMainType,
    &E::GetCalloutFeatureAnnotationProperties, &E::GetDimensionExtensionLines, &E::GetDimensionLine,
    &E::GetDimensionValue, &E::GetDimensionTolerance, &E::GetCoordDimensionValue,
    &E::GetDimensionTexts, &E::GetTextString, &E::GetTextFont, &E::GetAnnotationToleranceModifiers,
    kFrame, &E::GetDatumReferences, &E::GetDatumReferenceLabel, &E::GetDatumReferenceDatumCount,
    kDatumAt, kInfo, &E::GetToleranceRowInfo, &E::GetToleranceRowCount, &E::GetZoneModifierData,
    &E::GetBeforeToleranceNote, &E::GetAfterToleranceNote, &E::GetUpperToleranceNote,
    &E::GetLowerToleranceNote, &E::GetPrefixToleranceNote, &E::GetSuffixToleranceNote,
    &E::GetDatumLabel, &E::GetDatumTargetCount, &E::GetDatumTargetAt, &E::GetDatumTargetLabel,
    &E::GetDatumTargetInfo, &E::GetRoughnessObtention, &E::GetRoughnessApplicability,
    &E::GetRoughnessFieldCount, &E::GetRoughnessFieldAt, &E::GetCaptureEntityCount,
    &E::GetCaptureEntity, &E::GetCaptureCameraData, &E::GetCaptureHiddenText, &E::HasClippingPlane,
    &E::GetActiveView>;
constexpr auto kAboutTheSet =
    &ExpectFailures<&E::GetAttributeExporter, &E::GetAnnotationSetCount, &E::GetAnnotationSet,
                    &E::GetAnnotationViewCount, &E::GetAnnotationView, &E::GetViewAnnotationCount,
                    &E::GetViewAnnotation, &E::GetCalloutAnnotationCount, &E::GetCaptureCount,
                    &E::GetCapture>;
constexpr auto kNeverAnswered =
    &ExpectFailures<&E::IsDrivingDimension, &E::GetDimensionFakeValue,
                    &E::GetAnnotationToleranceModifierCount, &E::GetAnnotationToleranceModifier,
                    &E::GetCompositeToleranceInfo, kOldFrame, kOldInfo, kDefaultInfo,
                    kDefaultDatumAt>;

void ExpectNothingAnswered(E& exporter) {
  for (Id about : {KOVAIdentifier(), SentinelIdentifier()}) {
    kAboutObjects(exporter, about, kNotInitialised);
    kAboutTheSet(exporter, about, kNotInitialised);
    kNeverAnswered(exporter, about, kNotImplemented);
  }
}

TEST(Guard, FailsForAnIdentifierWithoutObjectAndTouchesNothing) {
  EveryKind model;
  const auto exporter = Export(model.part);
  kAboutObjects(*exporter, KOVAIdentifier(), kFailure);
  kNeverAnswered(*exporter, Naming(&model.part.Face()), kNotImplemented);
}

TEST(Guard, HoldsWhileTheDocumentIsMissingAndEndsWhenPreProcessFindsIt) {
  EveryKind model;
  auto& document = model.part.GetDocument();
  document.SetAvailable(false);
  const auto exporter = Export(model.part);
  ExpectNothingAnswered(*exporter);
  EXPECT_THAT(exporter->Initialize(), FailsWith(kFailure));
  EXPECT_THAT(exporter->PreProcess(), FailsWith(2));
  EXPECT_THAT(exporter->PreProcess(), IsSuccess());
  document.SetAvailable(true);
  ExpectNothingAnswered(*exporter);
  EXPECT_THAT(exporter->PreProcess(), IsSuccess());
  EXPECT_EQ(Annotations(*exporter), Annotations(*Export(model.part)));
}

TEST(Guard, TakesADocumentOfAnotherKernelAsNone) {
  struct ForeignDocument : KOVADocument {
    bool IsAvailable() const override { return true; }
    KOVAResult GetExportRep(const KOVARepType&, KOVAExportRepresentation*&) override {
      return KOVAResult(kFailure);
    }
  } document;
  const auto exporter = Export(document);
  EXPECT_THAT(exporter->PreProcess(), FailsWith(2));
  ExpectNothingAnswered(*exporter);
}

// --- The annotation set --------------------------------------------------------------------------

TEST(AnnotationSet, OfAModelWithoutPmiIsAbsentAndReportedOnce) {
  Part part;
  part.Face(L"bare");
  for (const bool late : {false, true}) {
    part.GetDocument().SetAvailable(!late);
    const auto exporter = Export(part);
    part.GetDocument().SetAvailable(true);
    EXPECT_THAT(exporter->PreProcess(), FailsWith(2));
    EXPECT_THAT(exporter->PreProcess(), IsSuccess());
    EXPECT_EQ(CountFrom(*exporter, &E::GetAnnotationSetCount), Answer(0, 0));
    KOVAIdentifier set = SentinelIdentifier();
    EXPECT_THAT(exporter->GetAnnotationSet(0, set), IsSuccess());
    EXPECT_THAT(set, IsSentinel());
  }
}

TEST(AnnotationSet, IsOneAndEmptyUnderEveryIndex) {
  Part captures, annotations;
  captures.AddCapture({});
  annotations.AddText(annotations.Face(), L"note");
  for (Part* part : {&captures, &annotations}) {
    const auto exporter = Export(*part);
    EXPECT_THAT(exporter->PreProcess(), IsSuccess());
    EXPECT_EQ(CountFrom(*exporter, &E::GetAnnotationSetCount), Answer(0, 1));
    EXPECT_EQ(Views(*exporter).size(), part == &captures ? 0u : 1u);
    for (const int index : {0, 5, -1}) {
      KOVAIdentifier set = SentinelIdentifier();
      EXPECT_THAT(exporter->GetAnnotationSet(index, set), IsSuccess());
      EXPECT_THAT(set, Consists(nullptr, nullptr, nullptr, nullptr)) << index;
    }
  }
}

// --- Attribute exporter --------------------------------------------------------------------------

TEST(AttributeExporter, IsOneThatTellsTheCurrentStateOfAnyEntity) {
  Part part;
  FACE &plain = part.Face(), &current = part.Face(), &suppressed = part.Face();
  part.Integer(current, "current", 1);
  part.Integer(suppressed, "current", 0);
  const auto exporter = Export(part);
  KOVAAttributeExporter *first = nullptr, *second = nullptr;
  EXPECT_THAT(exporter->GetAttributeExporter(first), IsSuccess());
  EXPECT_THAT(exporter->GetAttributeExporter(second), IsSuccess());
  EXPECT_EQ(first, second);
  auto& own = dynamic_cast<KOVAOrvoPMIAttributeExporter&>(*first);
  KOVAOrvoPMIAttributeExporter attributes(own);
  EXPECT_EQ(&(attributes = own), &attributes);
  const std::tuple<ENTITY*, bool, long> kStates[] = {
      {&plain, true, 0}, {&current, true, 0}, {&suppressed, false, 0}, {nullptr, false, kFailure}};
  for (const auto& [entity, expected, code] : kStates) {
    bool state = !expected;
    EXPECT_THAT(attributes.GetCurrentState(Naming(entity), state), HasCode(code));
    EXPECT_EQ(state, expected);
  }
}

// --- Destruction ---------------------------------------------------------------------------------

TEST(Destruction, DeletesTheViewPlanesInOneCallAndNothingElse) {
  EveryKind model;
  const std::string print = FingerprintOf(model.part);
  const auto before = Balance();
  const long calls = standin::Count().deletionCalls;
  auto exporter = Export(model.part);
  Entities planes = Views(*exporter);
  planes.erase(std::remove(planes.begin(), planes.end(), nullptr), planes.end());
  EXPECT_EQ(standin::Count().liveEntities, before[0] + static_cast<long>(planes.size()));
  for (const ENTITY* plane : planes) EXPECT_EQ(is_PLANE(plane), 1);
  EXPECT_GT(planes.size(), 3u);
  EXPECT_EQ(standin::Count().deletionCalls, calls);
  exporter.reset();
  EXPECT_EQ(standin::Count().deletionCalls, calls + 1);
  for (const ENTITY* plane : planes) EXPECT_FALSE(kernel_state::is_live(plane));
  EXPECT_EQ(Balance(), before);
  EXPECT_EQ(FingerprintOf(model.part), print);
}

TEST(Destruction, MakesNoDeletionCallWithoutPlanesAndIgnoresAFailedOne) {
  Part part;
  auto& text = part.AddText(part.Face(), L"note");
  const long calls = standin::Count().deletionCalls;
  Export(part).reset();
  EXPECT_EQ(standin::Count().deletionCalls, calls);
  part.Place(text, {}, {1, 0, 0}, {0, 0, 1});
  auto exporter = Export(part);
  const ENTITY* plane = Views(*exporter).at(0);
  const Fault fault = Fault::KernelCall(1, 7);
  exporter.reset();
  EXPECT_TRUE(fault.HasFired());
  EXPECT_TRUE(kernel_state::is_live(plane));
  delete plane;
}

}  // namespace

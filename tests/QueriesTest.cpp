// Every query about one object, as one table: the kinds that it accepts, all that it writes for
// them, and what it answers to every other kind. What takes more than one object or answer to tell
// stands in the test file of its subject.

#include <algorithm>
#include <sstream>
#include <tuple>

#include "AllocationCounter.h"
#include "Matchers.h"

namespace {

using standin::Edit;
using standin::Part;

// Kinds of object, as bits. The first eleven occur as derived classes too.
constexpr unsigned kText = 1u << 0, kFlagNote = 1u << 1, kRoughness = 1u << 2, kTolerance = 1u << 3,
                   kDatumAttribute = 1u << 4, kTargetAttribute = 1u << 5, kDimension = 1u << 6,
                   kDatum = 1u << 7, kTarget = 1u << 8, kFrame = 1u << 9, kCapture = 1u << 10;
constexpr int kDerivedShift = 11;
constexpr unsigned kReference = 1u << 22, kModifier = 1u << 23, kView = 1u << 24,
                   kLeader = 1u << 25, kOther = 1u << 26, kNone = 1u << 27, kSet = 1u << 28;
constexpr unsigned DerivedFrom(unsigned kinds) { return kinds << kDerivedShift; }
constexpr unsigned With(unsigned kinds) { return kinds | DerivedFrom(kinds); }
constexpr unsigned kNotes = kText | kFlagNote, kEverything = ~0u;
constexpr unsigned kAttributes =
    kNotes | kRoughness | kTolerance | kDatumAttribute | kTargetAttribute;
constexpr unsigned kAnnotations = kAttributes | With(kDimension);
constexpr unsigned kDrawn = With(kAttributes | kDimension | kDatum | kTarget);

template <typename Class>
using Exactly = Class;

// clang-format off
// One object of every kind. All that can be drawn is drawn alike, on one face.
struct Specimens {
  Specimens() {
    Edit(display).leaders.add(&leader);
    Edit(*Edit(reference).datums[0]).modifiers = {&modifier};
    AddKinds<Exactly>(0);
    AddKinds<Derived>(kDerivedShift);
    Add(kReference, {&reference});
    Add(kModifier, {&modifier});
    Add(kOther, {&face, &note, &part.Collection({&face}), &part.Make<ATTRIB>(&face)}, 0);
    exporter = Export(part);
    KOVAIdentifier view, named;
    exporter->GetAnnotationView(KOVAIdentifier(), 0, view);
    exporter->GetAnnotationLeader(kinds[0].second, 0, named);
    kinds.insert(kinds.end(), {{kView, view}, {kLeader, named}, {kSet, KOVAIdentifier()}});
    view.SetNativeObject(nullptr);
    kinds.push_back({kNone, view});
    Edit(display).point = {16, 12, 35};
  }

  // An entity with what it answers.
  template <typename Class, typename... Owner>
  Class& New(typename Class::fields fields, Owner*... owner) {
    auto& made = part.Make<Class>(owner...);
    Edit(made) = std::move(fields);
    return made;
  }
  void Add(unsigned kind, std::initializer_list<ENTITY*> entities, int step = 1) {
    for (ENTITY* entity : entities) {
      kinds.push_back({kind, Naming(entity)});
      kind <<= step;
    }
  }
  template <template <typename> class As>
  void AddKinds(int shift) {
    auto& text = New<As<ATTRIB_KOVAPMI_TEXT>>({L"deburr", &display}, &face);
    auto& flagNote = New<As<ATTRIB_KOVAPMI_FLAGNOTE>>({L"deburr", &display}, &face);
    auto& roughness = New<As<ATTRIB_KOVAPMI_ROUGHNESS>>(
        {roughness_obtention_machining_mandatory, roughness_applicability_all_part_surfaces,
         {L"Ra 1.6", L"c"}, &display}, &face);
    auto& tolerance = New<As<ATTRIB_KOVAPMI_GEOM_TOL>>(
        {tol_position, 1, {&row, &row}, &note, &display}, &face);
    auto& datumAttribute = New<As<ATTRIB_KOVAPMI_DATUM>>({&datum}, &face);
    auto& targetAttribute = New<As<ATTRIB_KOVAPMI_DATUM_TARGET>>({&target}, &face);
    auto& dimension = New<As<KOVAPMI_DIMENSION>>(
        {dim_linear, dim_sub_width, 40.5, 1.5, 0.25, -0.5, 2.5, L"h7", L"H8", L"M6", &note,
         &display, {{12, 24, 1}, {16, 28, 2}}, {{20, 32, 3}, {24, 36, 4}, {28, 40, 5}}});
    entity_fields::members(dimension).add(&face);
    part.Integer(dimension, "QENATTRIB_COANNOT_TYPE", callout_feature_counterbore);
    part.GetDocument().Add(dimension);
    auto& capture = New<As<KOVAPMI_CAPTURE>>({{}, &camera, &clipping, L"hidden"});
    part.GetDocument().Add(capture);
    if (shift == 0) carriers = {&text, &datumAttribute, &targetAttribute, &capture};
    Edit(capture).members.add(carriers[0]);
    Edit(capture).members.add(&face);
    Add(1u << shift, {&text, &flagNote, &roughness, &tolerance, &datumAttribute, &targetAttribute,
                      &dimension, &New<As<KOVAPMI_DATUM>>(Edit(datum)),
                      &New<As<KOVAPMI_DATUMTGT>>(Edit(target)),
                      &New<As<KOVAPMI_DRF>>({L"A-B", {&reference}}), &capture});
  }

  Part part;
  FACE& face = part.Face();
  KOVAPMI_TEXT_PROPERTIES& properties =
      New<KOVAPMI_TEXT_PROPERTIES>({1, 0, 2, 0, -1, 0, 2.5, 0.5, 0.25, {1, 1, 1}});
  KOVAPMI_DISPLAY_PROPERTIES& display =
      New<KOVAPMI_DISPLAY_PROPERTIES>({{10, 20, 30}, {2, 0, 0}, {0, 0, 1}, &properties, {}});
  KOVAPMI_LEADER_GEN& leader = New<KOVAPMI_LEADER_GEN>({{4, 5, 6}, {1, 2, 3}});
  KOVAPMI_NOTE& note = New<KOVAPMI_NOTE>(
      {L"prefix", L"suffix", L"before", L"after", L"upper", L"lower", L"below"});
  KOVAPMI_ZONE_MODIFIER& modifier = New<KOVAPMI_ZONE_MODIFIER>({zone_mod_projected_zone, 12.5});
  KOVAPMI_GEOM_TOL_ROW& row = New<KOVAPMI_GEOM_TOL_ROW>(
      {mod_dia_spherical, 1.5, 2.5, 3.5, 4.5, {&modifier}, nullptr});
  KOVAPMI_DATUMTGT& target = New<KOVAPMI_DATUMTGT>(
      {L"A1", L"note", datum_target_line, &part.Make<APOINT>(QENposition(1, 2, 3)),
       &part.Make<APOINT>(QENposition(4, 5, 6)), &face, &display});
  KOVAPMI_DATUM& datum = New<KOVAPMI_DATUM>({L"A", {&target, nullptr}, &display});
  KOVAPMI_DREF& reference = part.AddReference(row, L"A-B", {&datum});
  KOVAPMI_CAMERA& camera = New<KOVAPMI_CAMERA>(
      {L"front", camera_parallel, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}, 0.1, 2.5});
  KOVAPMI_CLIPPINGPLANE& clipping = New<KOVAPMI_CLIPPINGPLANE>({{0.1, 2, 5}, {3, -4, 1}});
  std::array<ENTITY*, 4> carriers{};  // text, datum attribute, target attribute, capture
  std::vector<std::pair<unsigned, KOVAIdentifier>> kinds;
  std::unique_ptr<KOVAOrvoPMIExporter> exporter;
};

// Room for the outputs of any query, each holding what no query answers until the row that expects
// something else says so.
struct Outputs {
  explicit Outputs(bool flag) : b{flag, flag, flag, flag, flag, flag} {
    list.add(SentinelIdentifier());
  }

  Outputs& D(std::initializer_list<double> to) { return Begin(d, to); }
  Outputs& F(std::initializer_list<float> to) { return Begin(f, to); }
  Outputs& B(std::initializer_list<bool> to) { return Begin(b, to); }
  Outputs& S(std::initializer_list<const wchar_t*> texts) {
    std::transform(texts.begin(), texts.end(), s, [](auto text) { return KOVAString(text); });
    return *this;
  }
  template <typename Enum>
  Outputs& E(Enum to) {
    std::get<Enum>(enums) = to;
    return *this;
  }
  Outputs& Names(void* object, const char* type = kSentinelType,
                 const char* native = kSentinelNative) {
    id.SetNativeObject(object);
    id.SetTypeName(type);
    id.SetNativeTypeName(native);
    return *this;
  }
  Outputs& Adds(void* object, const char* type, KOVARepresentation* by, const char* native) {
    list.add(KOVAIdentifier(object, type, by, native, KOVAIdentifierCastHandle(nullptr)));
    return *this;
  }
  template <typename Enum>
  Enum& e() {
    return std::get<Enum>(enums);
  }

  std::string Describe() const {
    std::ostringstream text;
    const auto add = [&](const auto&... values) {
      ((text << ::testing::PrintToString(values) << ' '), ...);
    };
    add(n, u, index, d, f, b, s, id, owner, arrows);
    for (int i = 0; i < list.count(); ++i) add(list.at(i));
    std::apply(add, enums);
    return text.str();
  }

  int n = -77;
  unsigned u = 77, index = 0;
  double d[14] = {77, 77, 77, 77, 77, 77, 77, 77, 77, 77, 77, 77, 77, 77};
  float f[9] = {77, 77, 77, 77, 77, 77, 77, 77, 77};
  bool b[6];
  KOVAString s[8] = {SentinelString(), SentinelString(), SentinelString(), SentinelString(),
                     SentinelString(), SentinelString(), SentinelString(), SentinelString()};
  KOVAIdentifier id = SentinelIdentifier(), owner = SentinelIdentifier();
  KOVAIdentifiers list;
  KOVAPMIArrowSymbol arrows[2] = {ArrowSymbolDot, ArrowSymbolOblique};
  std::tuple<KOVAPMIUnit, KOVAPMIOrientation, KOVAPMIFont, KOVAPMIDimensionType,
             KOVAPMIDimensionMainType, KOVAPMICalloutFeatureAnnotationType, KOVAPMIToleranceType,
             KOVAPMIToleranceValueType, KOVAPMIToleranceModifier, KOVAPMIDatumTargetType,
             KOVAPMIRoughnessObtentionType, KOVAPMIRoughnessApplicabilityType, KOVAPMICameraType>
      enums{UnitRadian, OrientationVertical, FontOutline, DimensionTypeUserDefined,
            DimensionMainTypeUserDefined, CalloutFeatureAnnotationTypeChamfer,
            ToleranceTypeTotalRunout, ToleranceValueTypeRadial, ToleranceModifierBoundary,
            DatumTargetTypeArea, RoughnessObtentionTypeMachiningForbidden,
            RoughnessApplicabilityTypeBasicSurface, CameraTypePerspective};

 private:
  template <typename T, std::size_t size>
  Outputs& Begin(T (&outputs)[size], std::initializer_list<T> to) {
    std::copy(to.begin(), to.end(), outputs);
    return *this;
  }
};

// How a query answers besides.
constexpr int kNumbers = 1;   // with numbers, enumerators, flags or an identifier: no allocation
constexpr int kUntested = 2;  // any native object is taken as one of the accepted kind

struct Query {
  const char* name;
  unsigned accepted;  // kinds for which it succeeds and writes
  unsigned silent;    // kinds for which it succeeds and writes nothing
  int traits;
  KOVAResult (*ask)(KOVAPMIExporter& e, const KOVAIdentifier& i, Outputs& o);
  void (*expect)(Outputs& o, Specimens& m);
};
void PrintTo(const Query& query, std::ostream* out) { *out << query.name; }

// A row: the query, its arguments, accepted and silent kinds, traits, and what it writes.
#define QUERY(NAME, ARGUMENTS, ACCEPTED, SILENT, TRAITS, ...)                                       \
  Query {                                                                                           \
#NAME, ACCEPTED, SILENT, TRAITS,                                                                \
        [](KOVAPMIExporter & e, const KOVAIdentifier& i, Outputs& o)                                \
             -> KOVAResult { return e.NAME ARGUMENTS; },                                            \
                                                      [](Outputs & o,                               \
                                                         [[maybe_unused]] Specimens &               \
                                                             m) { static_cast<void>(__VA_ARGS__); } \
  }
const char* const kModifierData = KOVAPMIExporter::KOVAPMITypeZoneModifierData;
const char* const kAnnotation = KOVAPMIExporter::KOVAPMITypeAnnotation;

const Query kQueries[] = {
    QUERY(GetNumberOfEntitiesFromAnnotation, (i, o.n), kAnnotations, 0, kNumbers, o.n = 1),
    QUERY(GetEntityFromAnnotationAt, (i, 0, o.list), kAnnotations, 0, 0,
          o.Adds(&m.face, nullptr, m.part.GetDocument().GetBRep(), "ENTITY")),
    QUERY(GetViewCoordinateSystem, (i, o.f), kView, 0, kNumbers,
          o.F({10, 20, 30, 2, 0, 0, 0, 2, 0})),
    QUERY(GetAnnotationPositionInView, (i, o.f, o.e<KOVAPMIOrientation>(), o.f[2]), kAnnotations, 0,
          kNumbers, o.F({3, -4})),
    QUERY(GetAnnotationZDepth, (i, o.f[0]), kAnnotations, 0, kNumbers, o.F({5})),
    QUERY(GetAnnotationLeaderCount, (i, o.n), kDrawn, 0, kNumbers, o.n = 1),
    QUERY(GetAnnotationLeader, (i, 0, o.id), kDrawn, 0, kNumbers,
          o.Names(&m.leader, "KOVAOrvoPMILeader", "KOVAOrvoPMIDisplayInfo")),
    QUERY(GetLeaderPointCount, (i, o.n), kEverything & ~kSet, 0, kNumbers, o.n = 2),
    QUERY(GetLeader3DPoint, (i, 0, o.d), kLeader, 0, kNumbers, o.D({1, 2, 3})),
    QUERY(GetDimensionExtensionLines, (i, o.f, o.f + 2, o.f + 4), With(kDimension), 0, kNumbers,
          o.F({5, 6, 7, 8, 9, 10})),
    QUERY(GetDimensionLine, (i, o.arrows[0], o.f, o.arrows[1], o.f + 2, o.b[0], o.f + 4),
          With(kDimension), 0, kNumbers, o.F({1, 2, 3, 4})),
    QUERY(GetDimensionType, (i, o.e<KOVAPMIDimensionType>()), With(kDimension), 0, kNumbers,
          o.E(DimensionTypeWidth)),
    QUERY(GetDimensionMainType, (i, o.e<KOVAPMIDimensionMainType>()), With(kDimension), 0, kNumbers,
          o.E(DimensionMainTypeLinear)),
    QUERY(GetCalloutFeatureAnnotationProperties, (i, o.e<KOVAPMICalloutFeatureAnnotationType>()),
          With(kDimension), 0, kNumbers, o.E(CalloutFeatureAnnotationTypeCounterbore)),
    QUERY(GetDimensionValue, (i, o.d[0], o.e<KOVAPMIUnit>(), o.d[1]), With(kDimension), 0, kNumbers,
          o.D({40.5, 1.5})),
    QUERY(GetDimensionTolerance, (i, o.d[0], o.d[1], o.d[2], o.b[0], o.s[0], o.s[1]),
          With(kDimension), 0, 0, o.D({-0.5, 0.25, 2.5}).B({true}).S({L"h7", L"H8"})),
    QUERY(GetCoordDimensionValue, (i, o.n, o.d[0], o.d[1], o.d[2]), With(kDimension), 0, kNumbers,
          o.D({40.5, 0.25, -0.5})),
    QUERY(GetDimensionTexts, (i, o.s[0], o.s[1], o.s[2], o.s[3], o.s[4], o.s[5], o.s[6], o.s[7]),
          With(kDimension), 0, 0,
          o.S({L"prefix", L"suffix", L"before", L"after", L"upper", L"lower", L"M6", L"below"})),
    QUERY(GetToleranceInfo, (i, o.e<KOVAPMIToleranceType>(), o.b[0]), With(kTolerance), 0, kNumbers,
          o.E(ToleranceTypePosition).B({true})),
    QUERY(GetToleranceRowCount, (i, o.n), With(kTolerance), 0, kNumbers, o.n = 2),
    QUERY(GetToleranceRowInfo,
          (i, 0, o.e<KOVAPMIToleranceValueType>(), o.d[0], o.d[1], o.d[2], o.d[3]),
          With(kTolerance), 0, kNumbers,
          o.E(ToleranceValueTypeSpherical).D({1.5, 2.5, 3.5, 4.5})),
    QUERY(GetAnnotationToleranceModifiers, (i, 0, o.list), With(kTolerance), 0, 0,
          o.Adds(&m.modifier, kModifierData, nullptr, nullptr)),
    QUERY(GetZoneModifierData, (i, o.e<KOVAPMIToleranceModifier>(), o.b[0], o.d[0]), kModifier, 0,
          kNumbers | kUntested, o.E(ToleranceModifierProjectedZone).B({true}).D({12.5})),
    QUERY(GetBeforeToleranceNote, (i, o.s[0]), With(kTolerance), 0, 0, o.S({L"before"})),
    QUERY(GetAfterToleranceNote, (i, o.s[0]), With(kTolerance), 0, 0, o.S({L"after"})),
    QUERY(GetUpperToleranceNote, (i, o.s[0]), With(kTolerance), 0, 0, o.S({L"upper"})),
    QUERY(GetLowerToleranceNote, (i, o.s[0]), With(kTolerance), 0, 0, o.S({L"lower"})),
    QUERY(GetPrefixToleranceNote, (i, o.s[0]), With(kTolerance), 0, 0, o.S({L"prefix"})),
    QUERY(GetSuffixToleranceNote, (i, o.s[0]), With(kTolerance), 0, 0, o.S({L"suffix"})),
    QUERY(GetDatumReferences, (i, o.list), With(kFrame), 0, 0,
          o.Adds(&m.reference, KOVAPMIExporter::KOVAPMITypeDatumRef, nullptr, nullptr)),
    QUERY(GetDatumReferenceLabel, (i, o.s[0]), kReference, 0, kUntested, o.S({L"A-B"})),
    QUERY(GetDatumReferenceDatumCount, (i, o.n), kReference, 0, kNumbers | kUntested, o.n = 1),
    QUERY(GetDatumAt, (i, 0, o.id, o.owner, o.list), kReference, 0, kUntested,
          o.Names(m.carriers[1], kAnnotation).Adds(&m.modifier, kModifierData, nullptr, nullptr)),
    QUERY(GetDatumLabel, (i, o.s[0]), kDatumAttribute | kDatum, DerivedFrom(kDatum), 0, o.S({L"A"})),
    QUERY(GetDatumTargetCount, (i, o.u), kDatumAttribute | kDatum, DerivedFrom(kDatum), kNumbers,
          o.u = 2),
    QUERY(GetDatumTargetAt, (i, o.index, o.id), kDatumAttribute | kDatum, DerivedFrom(kDatum), 0,
          o.Names(m.carriers[2], kAnnotation)),
    QUERY(GetDatumTargetLabel, (i, o.s[0]), kTargetAttribute | kTarget, DerivedFrom(kTarget), 0,
          o.S({L"A1"})),
    QUERY(GetDatumTargetInfo,
          (i, o.e<KOVAPMIDatumTargetType>(), o.b[0], o.s[1], o.s[0], o.d, o.d + 3),
          kTargetAttribute | kTarget, DerivedFrom(kTarget), 0,
          o.E(DatumTargetTypeLine).S({L"note"}).D({1, 2, 3, 4, 5, 6})),
    QUERY(GetRoughnessObtention, (i, o.e<KOVAPMIRoughnessObtentionType>()), With(kRoughness), 0,
          kNumbers, o.E(RoughnessObtentionTypeMachiningMandatory)),
    QUERY(GetRoughnessApplicability, (i, o.e<KOVAPMIRoughnessApplicabilityType>()),
          With(kRoughness), 0, kNumbers, o.E(RoughnessApplicabilityTypeAllPartSurfaces)),
    QUERY(GetRoughnessFieldCount, (i, o.u), With(kRoughness), 0, kNumbers, o.u = 2),
    QUERY(GetRoughnessFieldAt, (i, 0, o.s[0]), With(kRoughness), 0, 0, o.S({L"Ra 1.6"})),
    QUERY(GetAnnotationTextCount, (i, o.n), With(kNotes), 0, kNumbers, o.n = 1),
    QUERY(GetTextString, (i, o.s[0]), With(kNotes), 0, 0, o.S({L"deburr"})),
    QUERY(GetTextFont,
          (i, o.e<KOVAPMIFont>(), o.s[0], o.b[0], o.f[0], o.b[1], o.b[2], o.b[3], o.b[4], o.b[5],
           o.f[1], o.f[2], o.d),
          With(kNotes), 0, kNumbers,
          o.B({true, false, true, false, true, false}).F({2.5, 0.5, 0.25})),
    QUERY(GetCaptureCount, (i, o.u), kSet, kEverything & ~kSet, kNumbers, o.u = 2),
    QUERY(GetCapture, (i, o.index, o.id), kSet, 0, kNumbers, o.id = Naming(m.carriers[3])),
    QUERY(GetCaptureEntityCount, (i, o.u), With(kCapture), 0, kNumbers, o.u = 2),
    QUERY(GetCaptureEntity, (i, o.index, o.id), With(kCapture), 0, kNumbers,
          o.Names(m.carriers[0])),
    QUERY(GetCaptureCameraData,
          (i, o.s[0], o.e<KOVAPMICameraType>(), o.d, o.d + 3, o.d + 6, o.d + 9, o.d[12], o.d[13]),
          With(kCapture), 0, 0,
          o.S({L"front"}).E(CameraTypeParallel)
           .D({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0.1, 2.5})),
    QUERY(GetCaptureHiddenText, (i, o.s[0]), With(kCapture), 0, 0, o.S({L"hidden"})),
    QUERY(HasClippingPlane, (i, o.b[0]), With(kCapture), 0, kNumbers, o.B({true})),
    QUERY(GetActiveView, (i, o.f), With(kCapture), 0, kNumbers, o.F({0.1F, 2, 5, 3, -4, 1})),
};
// clang-format on

class Queries : public ::testing::TestWithParam<Query> {
 protected:
  // Asks about one object of every kind; what each answer and the outputs have to be.
  template <typename Check>
  void AskAboutEverything(Check check) {
    const Query& query = GetParam();
    for (const auto& [kind, identifier] : specimens_.kinds) {
      const bool ours = (kind & query.accepted) != 0;
      if ((query.traits & kUntested) != 0 && !ours && identifier.GetNativeObject() != nullptr) {
        continue;
      }
      SCOPED_TRACE(::testing::Message() << "kind 0x" << std::hex << kind);
      check(identifier, ours, ours || (kind & query.silent) != 0 ? 0 : kFailure);
      // The native object decides, whatever else the identifier says; a leader's type name counts.
      if (identifier.GetNativeObject() == nullptr || kind == kLeader) continue;
      check(KOVAIdentifier(identifier.GetNativeObject(), kModifierData, nullptr, "misnamed",
                           KOVAIdentifierCastHandle(nullptr)),
            ours, ours || (kind & query.silent) != 0 ? 0 : kFailure);
    }
  }

  Specimens specimens_;
};

TEST_P(Queries, WriteWhatTheyAnswerForTheirKindsAndNothingForOthers) {
  for (const bool flag : {false, true}) {
    AskAboutEverything([&](const KOVAIdentifier& identifier, bool answers, long code) {
      Outputs outputs(flag), expected(flag);
      if (answers) GetParam().expect(expected, specimens_);
      EXPECT_THAT(GetParam().ask(*specimens_.exporter, identifier, outputs), HasCode(code));
      EXPECT_EQ(outputs.Describe(), expected.Describe());
    });
  }
}

TEST_P(Queries, ThatAnswerWithNumbersAllocateNothing) {
  if ((GetParam().traits & kNumbers) == 0) return;
  const long before = CountAllocations();
  ::operator delete(::operator new(1));
  ASSERT_EQ(CountAllocations(), before + 1);
  AskAboutEverything([&](const KOVAIdentifier& identifier, bool, long) {
    Outputs outputs(false);
    const long start = CountAllocations();
    GetParam().ask(*specimens_.exporter, identifier, outputs);
    EXPECT_EQ(CountAllocations(), start);
  });
}

INSTANTIATE_TEST_SUITE_P(Every, Queries, ::testing::ValuesIn(kQueries),
                         [](const auto& info) { return info.param.name; });

}  // namespace

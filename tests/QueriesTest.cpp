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
                   kLeader = 1u << 25, kOther = 1u << 26, kNullView = 1u << 27, kSet = 1u << 28;
std::string NameOf(unsigned kind) {
  // clang-format off
  static const char* const kNames[] = {
      "text", "flag note", "roughness", "tolerance", "datum attribute", "target attribute",
      "dimension", "datum", "target", "reference frame", "capture", "reference", "modifier", "view",
      "leader", "something else", "null view", "set"};
  // clang-format on
  int bit = 0;
  while (kind >> bit != 1) ++bit;
  return bit / kDerivedShift == 1 ? std::string("derived ") + kNames[bit - kDerivedShift]
                                  : kNames[bit < kDerivedShift ? bit : bit - kDerivedShift];
}
constexpr unsigned DerivedFrom(unsigned kinds) { return kinds << kDerivedShift; }
constexpr unsigned With(unsigned kinds) { return kinds | DerivedFrom(kinds); }
constexpr unsigned kNotes = kText | kFlagNote, kEverything = ~0u;
constexpr unsigned kObjects = kEverything & ~(kNullView | kSet);
constexpr unsigned kNamed = kObjects & ~(kView | kLeader);
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
    Edit(*row.GetDRF()).note = L"A|B";
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
    kinds.push_back({kNullView, view});
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
      part.Name(*entity, L"a name");
      part.Id(*entity, "an identifier");
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
// clang-format on

// Room for the outputs of any query, each holding what no query answers until the row that expects
// something else says so.
struct Outputs {
  explicit Outputs(bool flag) : flags{flag, flag, flag, flag, flag, flag} {
    std::fill(std::begin(texts), std::end(texts), SentinelString());
    list.add(SentinelIdentifier());
  }

  Outputs& Reals(std::initializer_list<double> to) { return Begin(reals, to); }
  Outputs& Floats(std::initializer_list<float> to) { return Begin(floats, to); }
  Outputs& Flags(std::initializer_list<bool> to) { return Begin(flags, to); }
  Outputs& Texts(std::initializer_list<const wchar_t*> to) {
    std::transform(to.begin(), to.end(), texts, [](auto text) { return KOVAString(text); });
    return *this;
  }
  Outputs& Nothing() { return *this; }
  template <typename Enum>
  Outputs& Put(Enum to) {
    as<Enum>() = to;
    return *this;
  }
  Outputs& Names(void* object, const char* type = kSentinelType,
                 const char* native = kSentinelNative) {
    id.SetNativeObject(object);
    id.SetTypeName(type);
    id.SetNativeTypeName(native);
    return *this;
  }
  Outputs& Adds(void* object, const char* type, KOVARepresentation* by = nullptr,
                const char* native = nullptr) {
    list.add(KOVAIdentifier(object, type, by, native, KOVAIdentifierCastHandle(nullptr)));
    return *this;
  }
  template <typename Enum>
  Enum& as() {
    return std::get<Enum>(enums);
  }

  std::string Describe() const {
    std::ostringstream text;
    const auto add = [&](const char* names, const auto&... values) {
      text << names << '\n';
      ((text << ::testing::PrintToString(values) << '\n'), ...);
    };
    add("count, size, index, attribute exporter:", count, size, index, attributes);
    add("numbers, flags, texts, arrows, enumerators:", reals, floats, flags, texts, arrows, enums);
    add("identifier, owner, listed:", id, owner);
    for (int i = 0; i < list.count(); ++i) add("", list.at(i));
    return text.str();
  }

  int count = -kUntouched;
  unsigned size = kUntouched, index = 0;
  Untouched<double, 14> reals;
  Untouched<float, 9> floats;
  bool flags[6];
  KOVAString texts[8];
  KOVAIdentifier id = SentinelIdentifier(), owner = SentinelIdentifier();
  KOVAIdentifiers list;
  KOVAPMIArrowSymbol arrows[2] = {ArrowSymbolDot, ArrowSymbolOblique};
  std::tuple<KOVAPMIUnit, KOVAPMIOrientation, KOVAPMIFont, KOVAPMIAnnotationType,
             KOVAPMIDimensionType, KOVAPMIDimensionMainType, KOVAPMICalloutFeatureAnnotationType,
             KOVAPMIToleranceType, KOVAPMIToleranceValueType, KOVAPMIToleranceModifier,
             KOVAPMIDatumTargetType, KOVAPMIRoughnessObtentionType,
             KOVAPMIRoughnessApplicabilityType, KOVAPMICameraType>
      // clang-format off
      enums{UnitRadian, OrientationVertical, FontOutline, AnnotationTypeUnknown,
            DimensionTypeUserDefined, DimensionMainTypeUserDefined,
            CalloutFeatureAnnotationTypeChamfer, ToleranceTypeTotalRunout,
            ToleranceValueTypeRadial, ToleranceModifierBoundary, DatumTargetTypeArea,
            RoughnessObtentionTypeMachiningForbidden,
            RoughnessApplicabilityTypeBasicSurface, CameraTypePerspective};
  // clang-format on
  KOVAAttributeExporter* attributes = nullptr;

 private:
  template <typename Numbers, typename Number>
  Outputs& Begin(Numbers& outputs, std::initializer_list<Number> to) {
    std::copy(to.begin(), to.end(), std::begin(outputs));
    return *this;
  }
};

// How a query answers besides.
constexpr int kNumbers = 1;    // with numbers, enumerators, flags or an identifier: no allocation
constexpr int kUntested = 2;   // any native object is taken as one of the accepted kind
constexpr int kElsewhere = 4;  // what it writes for the accepted kinds is told in another test
constexpr int kAnyTime = 8;    // while there is no document too
constexpr int kNever = 16;     // neither here nor in the framework

struct Query {
  const char* name;
  unsigned accepted;  // kinds for which it succeeds and writes
  unsigned silent;    // kinds for which it succeeds and writes nothing
  int traits;
  KOVAResult (*ask)(KOVAPMIExporter& exporter, const KOVAIdentifier& id, Outputs& out);
  void (*expect)(Outputs& out, Specimens& model);

  bool Is(int trait) const { return (traits & trait) != 0; }
};

// clang-format off
// A row: the query, its arguments, accepted and silent kinds, traits, and what it writes.
#define QUERY(NAME, ARGUMENTS, ACCEPTED, SILENT, TRAITS, ...)                                     \
  Query{#NAME, ACCEPTED, SILENT, TRAITS,                                                          \
        [](KOVAPMIExporter& exporter, [[maybe_unused]] const KOVAIdentifier& id, Outputs& out)    \
            -> KOVAResult { return exporter.NAME ARGUMENTS; },                                    \
        []([[maybe_unused]] Outputs& out, [[maybe_unused]] Specimens& model) { __VA_ARGS__; }}
#define NEVER(NAME, ARGUMENTS) QUERY(NAME, ARGUMENTS, 0, 0, kNever, out.Nothing())
const char* const kModifierData = KOVAPMIExporter::KOVAPMITypeZoneModifierData;
const char* const kAnnotation = KOVAPMIExporter::KOVAPMITypeAnnotation;

const Query kQueries[] = {
    // The set, views and callouts.
    QUERY(GetAttributeExporter, (out.attributes), kEverything, 0, kNumbers,
          model.exporter->GetAttributeExporter(out.attributes)),
    QUERY(GetAnnotationSetCount, (out.count), kEverything, 0, kNumbers, out.count = 1),
    QUERY(GetAnnotationSet, (0, out.id), kEverything, 0, kNumbers, out.id = KOVAIdentifier()),
    QUERY(GetAnnotationViewCount, (id, out.count), kEverything, 0, kNumbers,
          out.count = static_cast<int>(Views(*model.exporter).size())),
    QUERY(GetAnnotationView, (id, -1, out.id), 0, 0, kNumbers, out.Nothing()),
    QUERY(GetViewAnnotationCount, (id, out.count), kEverything, 0, kElsewhere, out.Nothing()),
    QUERY(GetViewAnnotation, (id, -1, out.id), 0, 0, kNumbers, out.Nothing()),
    QUERY(GetCalloutAnnotationCount, (id, out.count), kEverything, 0, kNumbers, out.count = 0),
    QUERY(GetCalloutAnnotationAt, (id, 0, out.id), 0, 0, kNumbers, out.Nothing()),
    // What every annotation has.
    QUERY(GetPID, (id, out.texts[0]), kNamed, kObjects, 0, out.Texts({L"an identifier"})),
    QUERY(GetAnnotationName, (id, out.texts[0]), kNamed, kObjects, 0, out.Texts({L"a name"})),
    QUERY(GetAnnotationType, (id, out.as<KOVAPMIAnnotationType>()), kObjects, 0,
          kNumbers | kElsewhere, out.Nothing()),
    QUERY(IsAnnotationHidden, (id, out.flags[0]), kObjects, 0, kNumbers, out.Flags({false})),
    QUERY(GetAnnotationText, (id, 0, out.id), kObjects, 0, kNumbers | kElsewhere, out.Nothing()),
    QUERY(GetNumberOfEntitiesFromAnnotation, (id, out.count), kAnnotations, 0, kNumbers,
          out.count = 1),
    QUERY(GetEntityFromAnnotationAt, (id, 0, out.list), kAnnotations, 0, 0,
          out.Adds(&model.face, nullptr, model.part.GetDocument().GetBRep(), "ENTITY")),
    // Placement and leaders.
    QUERY(GetViewCoordinateSystem, (id, out.floats), kView, 0, kNumbers,
          out.Floats({10, 20, 30, 2, 0, 0, 0, 2, 0})),
    QUERY(GetAnnotationPositionInView,
          (id, out.floats, out.as<KOVAPMIOrientation>(), out.floats[2]), kAnnotations, 0, kNumbers,
          out.Floats({3, -4})),
    QUERY(GetAnnotationZDepth, (id, out.floats[0]), kAnnotations, 0, kNumbers, out.Floats({5})),
    QUERY(GetAnnotationLeaderCount, (id, out.count), kDrawn, 0, kNumbers, out.count = 1),
    QUERY(GetAnnotationLeader, (id, 0, out.id), kDrawn, 0, kNumbers,
          out.Names(&model.leader, "KOVAOrvoPMILeader", "KOVAOrvoPMIDisplayInfo")),
    QUERY(GetLeaderPointCount, (id, out.count), kEverything & ~kSet, 0, kNumbers | kAnyTime,
          out.count = 2),
    QUERY(GetLeader3DPoint, (id, 0, out.reals), kLeader, 0, kNumbers | kAnyTime,
          out.Reals({1, 2, 3})),
    // Dimensions.
    QUERY(GetDimensionExtensionLines, (id, out.floats, out.floats + 2, out.floats + 4),
          With(kDimension), 0, kNumbers, out.Floats({5, 6, 7, 8, 9, 10})),
    QUERY(GetDimensionLine,
          (id, out.arrows[0], out.floats, out.arrows[1], out.floats + 2, out.flags[0],
           out.floats + 4),
          With(kDimension), 0, kNumbers, out.Floats({1, 2, 3, 4})),
    QUERY(GetDimensionType, (id, out.as<KOVAPMIDimensionType>()), With(kDimension), 0, kNumbers,
          out.Put(DimensionTypeWidth)),
    QUERY(GetDimensionMainType, (id, out.as<KOVAPMIDimensionMainType>()), With(kDimension), 0,
          kNumbers, out.Put(DimensionMainTypeLinear)),
    QUERY(GetCalloutFeatureAnnotationProperties,
          (id, out.as<KOVAPMICalloutFeatureAnnotationType>()), With(kDimension), 0, kNumbers,
          out.Put(CalloutFeatureAnnotationTypeCounterbore)),
    QUERY(GetDimensionValue, (id, out.reals[0], out.as<KOVAPMIUnit>(), out.reals[1]),
          With(kDimension), 0, kNumbers, out.Reals({40.5, 1.5})),
    QUERY(GetDimensionTolerance,
          (id, out.reals[0], out.reals[1], out.reals[2], out.flags[0], out.texts[0], out.texts[1]),
          With(kDimension), 0, 0,
          out.Reals({-0.5, 0.25, 2.5}).Flags({true}).Texts({L"h7", L"H8"})),
    QUERY(GetCoordDimensionValue, (id, out.count, out.reals[0], out.reals[1], out.reals[2]),
          With(kDimension), 0, kNumbers, out.Reals({40.5, 0.25, -0.5})),
    QUERY(GetDimensionTexts,
          (id, out.texts[0], out.texts[1], out.texts[2], out.texts[3], out.texts[4], out.texts[5],
           out.texts[6], out.texts[7]),
          With(kDimension), 0, 0,
          out.Texts({L"prefix", L"suffix", L"before", L"after", L"upper", L"lower", L"M6",
                     L"below"})),
    // Tolerances, their frames and references.
    QUERY(GetToleranceInfo, (id, out.as<KOVAPMIToleranceType>(), out.flags[0]), With(kTolerance), 0,
          kNumbers, out.Put(ToleranceTypePosition).Flags({true})),
    QUERY(GetToleranceRowCount, (id, out.count), With(kTolerance), 0, kNumbers, out.count = 2),
    QUERY(GetToleranceRowInfo,
          (id, 0, out.as<KOVAPMIToleranceValueType>(), out.reals[0], out.reals[1], out.reals[2],
           out.reals[3]),
          With(kTolerance), 0, kNumbers,
          out.Put(ToleranceValueTypeSpherical).Reals({1.5, 2.5, 3.5, 4.5})),
    QUERY(GetAnnotationToleranceModifiers, (id, 0, out.list), With(kTolerance), 0, 0,
          out.Adds(&model.modifier, kModifierData)),
    QUERY(GetZoneModifierData, (id, out.as<KOVAPMIToleranceModifier>(), out.flags[0], out.reals[0]),
          kModifier, 0, kNumbers | kUntested,
          out.Put(ToleranceModifierProjectedZone).Flags({true}).Reals({12.5})),
    QUERY(GetBeforeToleranceNote, (id, out.texts[0]), With(kTolerance), 0, 0,
          out.Texts({L"before"})),
    QUERY(GetAfterToleranceNote, (id, out.texts[0]), With(kTolerance), 0, 0, out.Texts({L"after"})),
    QUERY(GetUpperToleranceNote, (id, out.texts[0]), With(kTolerance), 0, 0, out.Texts({L"upper"})),
    QUERY(GetLowerToleranceNote, (id, out.texts[0]), With(kTolerance), 0, 0, out.Texts({L"lower"})),
    QUERY(GetPrefixToleranceNote, (id, out.texts[0]), With(kTolerance), 0, 0,
          out.Texts({L"prefix"})),
    QUERY(GetSuffixToleranceNote, (id, out.texts[0]), With(kTolerance), 0, 0,
          out.Texts({L"suffix"})),
    QUERY(GetAnnotationAssociatedRefFrame, (id, 0, out.texts[0], out.id), With(kTolerance), 0, 0,
          out.Texts({L"A|B"}).Names(model.row.GetDRF(), KOVAPMIExporter::KOVAPMITypeDatumRef)),
    QUERY(GetDatumReferences, (id, out.list), With(kFrame), 0, 0,
          out.Adds(&model.reference, KOVAPMIExporter::KOVAPMITypeDatumRef)),
    QUERY(GetDatumReferenceLabel, (id, out.texts[0]), kReference, 0, kUntested,
          out.Texts({L"A-B"})),
    QUERY(GetDatumReferenceDatumCount, (id, out.count), kReference, 0, kNumbers | kUntested,
          out.count = 1),
    QUERY(GetDatumAt, (id, 0, out.id, out.owner, out.list), kReference, 0, kUntested,
          out.Names(model.carriers[1], kAnnotation).Adds(&model.modifier, kModifierData)),
    // Datums, targets and roughness.
    QUERY(GetDatumLabel, (id, out.texts[0]), kDatumAttribute | kDatum, DerivedFrom(kDatum), 0,
          out.Texts({L"A"})),
    QUERY(GetDatumTargetCount, (id, out.size), kDatumAttribute | kDatum, DerivedFrom(kDatum),
          kNumbers, out.size = 2),
    QUERY(GetDatumTargetAt, (id, out.index, out.id), kDatumAttribute | kDatum, DerivedFrom(kDatum),
          0, out.Names(model.carriers[2], kAnnotation)),
    QUERY(GetDatumTargetLabel, (id, out.texts[0]), kTargetAttribute | kTarget, DerivedFrom(kTarget),
          0, out.Texts({L"A1"})),
    QUERY(GetDatumTargetInfo,
          (id, out.as<KOVAPMIDatumTargetType>(), out.flags[0], out.texts[1], out.texts[0],
           out.reals, out.reals + 3),
          kTargetAttribute | kTarget, DerivedFrom(kTarget), 0,
          out.Put(DatumTargetTypeLine).Texts({L"note"}).Reals({1, 2, 3, 4, 5, 6})),
    QUERY(GetRoughnessObtention, (id, out.as<KOVAPMIRoughnessObtentionType>()), With(kRoughness), 0,
          kNumbers, out.Put(RoughnessObtentionTypeMachiningMandatory)),
    QUERY(GetRoughnessApplicability, (id, out.as<KOVAPMIRoughnessApplicabilityType>()),
          With(kRoughness), 0, kNumbers, out.Put(RoughnessApplicabilityTypeAllPartSurfaces)),
    QUERY(GetRoughnessFieldCount, (id, out.size), With(kRoughness), 0, kNumbers, out.size = 2),
    QUERY(GetRoughnessFieldAt, (id, 0, out.texts[0]), With(kRoughness), 0, 0,
          out.Texts({L"Ra 1.6"})),
    // Texts.
    QUERY(GetAnnotationTextCount, (id, out.count), With(kNotes), 0, kNumbers, out.count = 1),
    QUERY(GetTextString, (id, out.texts[0]), With(kNotes), 0, 0, out.Texts({L"deburr"})),
    QUERY(GetTextFont,
          (id, out.as<KOVAPMIFont>(), out.texts[0], out.flags[0], out.floats[0], out.flags[1],
           out.flags[2], out.flags[3], out.flags[4], out.flags[5], out.floats[1], out.floats[2],
           out.reals),
          With(kNotes), 0, kNumbers,
          out.Flags({true, false, true, false, true, false}).Floats({2.5, 0.5, 0.25})),
    // Captures.
    QUERY(GetCaptureCount, (id, out.size), kSet, kEverything & ~kSet, kNumbers, out.size = 2),
    QUERY(GetCapture, (id, out.index, out.id), kSet, 0, kNumbers,
          out.id = Naming(model.carriers[3])),
    QUERY(GetCaptureEntityCount, (id, out.size), With(kCapture), 0, kNumbers, out.size = 2),
    QUERY(GetCaptureEntity, (id, out.index, out.id), With(kCapture), 0, kNumbers,
          out.Names(model.carriers[0])),
    QUERY(GetCaptureCameraData,
          (id, out.texts[0], out.as<KOVAPMICameraType>(), out.reals, out.reals + 3, out.reals + 6,
           out.reals + 9, out.reals[12], out.reals[13]),
          With(kCapture), 0, 0,
          out.Texts({L"front"}).Put(CameraTypeParallel)
              .Reals({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0.1, 2.5})),
    QUERY(GetCaptureHiddenText, (id, out.texts[0]), With(kCapture), 0, 0, out.Texts({L"hidden"})),
    QUERY(HasClippingPlane, (id, out.flags[0]), With(kCapture), 0, kNumbers, out.Flags({true})),
    QUERY(GetActiveView, (id, out.floats), With(kCapture), 0, kNumbers,
          out.Floats({0.1F, 2, 5, 3, -4, 1})),
    // What nobody answers.
    NEVER(IsDrivingDimension, (id, out.flags[0])),
    NEVER(GetDimensionFakeValue, (id, out.count, out.texts[0])),
    NEVER(GetAnnotationToleranceModifierCount, (id, out.count, true)),
    NEVER(GetAnnotationToleranceModifier, (id, 0, out.as<KOVAPMIToleranceModifier>())),
    NEVER(GetCompositeToleranceInfo, (id, out.as<KOVAPMIToleranceValueType>(), out.reals[0],
                                      out.reals[1], out.reals[2])),
    NEVER(GetAnnotationAssociatedRefFrame, (id, out.texts[0], out.id, false)),
    NEVER(GetToleranceInfo,
          (id, out.as<KOVAPMIToleranceType>(), out.as<KOVAPMIToleranceValueType>(), out.reals[0],
           out.reals[1], out.reals[2], out.reals[3], out.reals[4], out.reals[5], out.flags[0])),
    NEVER(GetToleranceInfo,
          (id, out.as<KOVAPMIToleranceType>(), out.as<KOVAPMIToleranceValueType>(), out.reals[0],
           out.reals[1], out.reals[2], out.reals[3], out.reals[4], out.reals[5], out.flags[0],
           out.texts[0], out.flags[1])),
    NEVER(GetDatumAt, (id, 0, out.id, out.as<KOVAPMIToleranceModifier>(), out.owner)),
};
// clang-format on

// Asks a query; its code, and the outputs, which are as without an answer or as in `model`.
void Expect(const Query& query, KOVAPMIExporter& exporter, const KOVAIdentifier& id, long code,
            Specimens* model = nullptr) {
  for (const bool flag : {false, true}) {
    Outputs outputs(flag), expected(flag);
    if (model != nullptr) query.expect(expected, *model);
    EXPECT_THAT(query.ask(exporter, id, outputs), HasCode(code));
    EXPECT_EQ(outputs.Describe(), expected.Describe());
  }
}

// Asks each query that `wanted` takes about one object of every kind.
template <typename Wanted, typename Ask>
void AskAboutEverything(Wanted wanted, Ask ask) {
  for (const Query& query : kQueries) {
    if (!wanted(query)) continue;
    Specimens model;
    for (const auto& [kind, id] : model.kinds) {
      const bool accepted = (kind & query.accepted) != 0;
      if (query.Is(kUntested) && !accepted && id.GetNativeObject() != nullptr) continue;
      SCOPED_TRACE(std::string(query.name) + " of " + NameOf(kind));
      ask(query, model, kind, id);
      // The native object decides, whatever else the identifier says; a leader's type name counts.
      if (id.GetNativeObject() == nullptr || kind == kLeader) continue;
      ask(query, model, kind,
          KOVAIdentifier(id.GetNativeObject(), kModifierData, nullptr, "misnamed",
                         KOVAIdentifierCastHandle(nullptr)));
    }
  }
}

TEST(Queries, WriteWhatTheyAnswerForTheirKindsAndNothingForOthers) {
  const auto every = [](const Query&) { return true; };
  AskAboutEverything(every,
                     [](const Query& query, Specimens& model, unsigned kind, const auto& id) {
                       const bool accepted = (kind & query.accepted) != 0;
                       if (accepted && query.Is(kElsewhere)) return;
                       const long code = query.Is(kNever)                         ? kNotImplemented
                                         : accepted || (kind & query.silent) != 0 ? 0
                                                                                  : kFailure;
                       Expect(query, *model.exporter, id, code, accepted ? &model : nullptr);
                     });
}

TEST(Queries, ThatAnswerWithNumbersAllocateNothing) {
  const long before = CountAllocations();
  ::operator delete(::operator new(1));
  ASSERT_EQ(CountAllocations(), before + 1);
  const auto numbers = [](const Query& query) { return query.Is(kNumbers); };
  AskAboutEverything(numbers, [](const Query& query, Specimens& model, unsigned, const auto& id) {
    Outputs outputs(false);
    const long start = CountAllocations();
    query.ask(*model.exporter, id, outputs);
    EXPECT_EQ(CountAllocations(), start);
  });
}

TEST(Queries, ThatRunOutOfMemoryRaiseBadAllocAndAnswerTheNextTime) {
  const auto others = [](const Query& query) { return !query.Is(kNumbers | kNever | kElsewhere); };
  long failures = 0;
  AskAboutEverything(others,
                     [&](const Query& query, Specimens& model, unsigned kind, const auto& id) {
                       if ((kind & query.accepted) == 0) return;
                       bool fired = true;
                       for (long n = 1; fired; ++n) {
                         Outputs outputs(false);
                         bool raised = false;
                         {
                           const FailingAllocation fault(n);
                           try {
                             query.ask(*model.exporter, id, outputs);
                           } catch (const std::bad_alloc&) {
                             raised = true;
                           }
                           fired = fault.HasFired();
                         }
                         EXPECT_EQ(raised, fired) << n;
                         failures += fired;
                       }
                       Expect(query, *model.exporter, id, 0, &model);
                     });
  EXPECT_GT(failures, kSharedLibrariesToo ? 100 : 20);
}

// --- Without a document --------------------------------------------------------------------------

void ExpectNothingAnswered(KOVAPMIExporter& exporter, Specimens& model) {
  for (const Query& query : kQueries) {
    SCOPED_TRACE(query.name);
    if (query.Is(kAnyTime)) continue;
    const long code = query.Is(kNever) ? kNotImplemented : kNotInitialised;
    Expect(query, exporter, SentinelIdentifier(), code);
    for (const auto& [kind, id] : model.kinds) Expect(query, exporter, id, code);
  }
}

TEST(Guard, HoldsWhileTheDocumentIsMissingAndEndsWhenPreProcessFindsIt) {
  Specimens model;
  auto& document = model.part.GetDocument();
  document.SetAvailable(false);
  const auto exporter = Export(model.part);
  ExpectNothingAnswered(*exporter, model);
  EXPECT_THAT(exporter->PreProcess(), FailsWith(2));
  EXPECT_THAT(exporter->PreProcess(), IsSuccess());
  document.SetAvailable(true);
  ExpectNothingAnswered(*exporter, model);
  EXPECT_THAT(exporter->PreProcess(), IsSuccess());
  EXPECT_EQ(Annotations(*exporter), Annotations(*model.exporter));
}

TEST(Guard, TakesADocumentOfAnotherKernelAsNone) {
  struct ForeignDocument : KOVADocument {
    bool IsAvailable() const override { return true; }
    KOVAResult GetExportRep(const KOVARepType&, KOVAExportRepresentation*&) override {
      return KOVAResult(kFailure);
    }
  } document;
  Specimens model;
  const auto exporter = Export(document);
  EXPECT_THAT(exporter->PreProcess(), FailsWith(2));
  ExpectNothingAnswered(*exporter, model);
}

}  // namespace

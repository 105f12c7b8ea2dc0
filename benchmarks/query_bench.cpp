// One query of each shape beside a virtual call of the same signature that makes the same kind
// tests or look-up and reads the same getters.
#include <map>
#include <tuple>

#include "IdentifierHashMap.h"
#include "Measure.h"
#include "Models.h"
#include "orvo_kernel/api.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

namespace {

constexpr KOVAResult kSuccess(0);
constexpr KOVAResult kFailure(0x1000001);

KOVAIdentifier Naming(ENTITY& entity) {
  return KOVAIdentifier(&entity, nullptr, nullptr, nullptr, KOVAIdentifierCastHandle(nullptr));
}
ENTITY* EntityOf(const KOVAIdentifier& identifier) {
  return static_cast<ENTITY*>(identifier.GetNativeObject());
}

// The object as one of a class when the test for the class holds, else null.
template <typename Kind, int (*Is)(const ENTITY*)>
Kind* As(ENTITY* entity) {
  return Is(entity) == 1 ? static_cast<Kind*>(entity) : nullptr;
}

// The place of an annotation's kind among all kinds, in the order in which they are tested.
int KindOf(ENTITY* e) {
  int place = 0;
  const auto is = [&](int test) { return ++place, test == 1; };
  const bool found = is(is_ATTRIB_KOVAPMI_TEXT(e)) || is(is_ATTRIB_KOVAPMI_ROUGHNESS(e)) ||
                     is(is_ATTRIB_KOVAPMI_GEOM_TOL(e)) || is(is_KOVAPMI_DIMENSION(e)) ||
                     is(is_ATTRIB_KOVAPMI_DATUM(e)) || is(is_KOVAPMI_DATUM(e)) ||
                     is(is_ATTRIB_KOVAPMI_DATUM_TARGET(e)) || is(is_KOVAPMI_DATUMTGT(e)) ||
                     is(is_ATTRIB_KOVAPMI_FLAGNOTE(e));
  return found ? place : 0;
}

// One object of each kind that is asked for, and the plain queries.
class Drawing {
 public:
  standin::Part part;
  FACE& face = part.Face();
  ATTRIB_KOVAPMI_TEXT& text = part.AddText(face, L"REMOVE BURRS AND BREAK EDGES");
  ATTRIB_KOVAPMI_FLAGNOTE& flag = part.AddFlagNote(face, L"KEY CHARACTERISTIC");
  ATTRIB_KOVAPMI_ROUGHNESS& roughness = part.AddRoughness(face, {L"Ra 1.6", L"milled"});
  ATTRIB_KOVAPMI_DATUM& datum = part.AddDatum(face, L"A");
  ATTRIB_KOVAPMI_GEOM_TOL& tolerance = part.AddGeometricTolerance(face, tol_flatness, 0.1);
  KOVAPMI_DREF& reference = part.AddReference(*standin::Edit(tolerance).rows[0], L"A", {});
  KOVAPMI_DIMENSION& callout = part.MakeCallout(callout_feature_hole, 8);
  KOVAPMI_DIMENSION& dimension =
      part.AddDimension({&face, &callout}, dim_linear, dim_sub_width, 40);
  models::Exporter exporter;
  KOVAIdentifier view;

  Drawing() {
    standin::Edit(dimension).upper_text = L"+0.05";
    standin::Edit(dimension).lower_text = L"-0.05";
    auto& display = part.Place(flag, {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
    part.AddLeader(display, {0, 0, 0}, {1, 1, 1});
    part.Name(text, L"General note 12");
    exporter = models::Index(part);
    KOVAIdentifier set;
    exporter->GetAnnotationSet(0, set);
    exporter->GetAnnotationView(set, 1, view);  // the null view comes first
    views_.Add(KOVAIdentifier(), {Naming(text)});
    views_.Add(view, {Naming(flag)});
    for (ATTRIB* a = face.first_attribute(); a != nullptr; a = a->next_attribute()) {
      owners_[a] = {&face};
    }
    owners_[&dimension] = {&face, &callout};
  }
  virtual ~Drawing() = default;

  // --- Objects behind annotations ---

  virtual KOVAResult GetAnnotationType(const KOVAIdentifier& annotation,
                                       KOVAPMIAnnotationType& type) {
    ENTITY* const entity = EntityOf(annotation);
    if (entity == nullptr) return kFailure;
    type = static_cast<KOVAPMIAnnotationType>(KindOf(entity));
    return kSuccess;
  }
  virtual KOVAResult GetAnnotationLeaderCount(const KOVAIdentifier& annotation, int& count) {
    ENTITY* const entity = EntityOf(annotation);
    if (entity == nullptr || KindOf(entity) == 0) return kFailure;
    auto* const note = static_cast<ATTRIB_KOVAPMI_FLAGNOTE*>(entity);
    count = note->get_display_properties()->get_leaders().count();
    return kSuccess;
  }
  virtual KOVAResult GetDimensionType(const KOVAIdentifier& annotation,
                                      KOVAPMIDimensionType& type) {
    auto* const found = As<KOVAPMI_DIMENSION, is_KOVAPMI_DIMENSION>(EntityOf(annotation));
    if (found == nullptr) return kFailure;
    type = KOVAOrvoPMIEnumUtils::ToEnum(found->get_dimension_subtype());
    return kSuccess;
  }
  virtual KOVAResult GetDimensionValue(const KOVAIdentifier& annotation, double& value,
                                       KOVAPMIUnit&, double& precision) {
    auto* const found = As<KOVAPMI_DIMENSION, is_KOVAPMI_DIMENSION>(EntityOf(annotation));
    if (found == nullptr) return kFailure;
    value = found->get_dimension_value();
    precision = found->get_dimval_precision();
    return kSuccess;
  }
  virtual KOVAResult GetToleranceRowInfo(const KOVAIdentifier& annotation, int row,
                                         KOVAPMIToleranceValueType& type, double& magnitude,
                                         double& refinement, double& unit1, double& unit2) {
    auto* const found =
        As<ATTRIB_KOVAPMI_GEOM_TOL, is_ATTRIB_KOVAPMI_GEOM_TOL>(EntityOf(annotation));
    KOVAPMI_GEOM_TOL_ROW* of = nullptr;
    if (found == nullptr || found->get_geom_tol_row_at(row, of) != 1) return kFailure;
    type = KOVAOrvoPMIEnumUtils::ToEnum(of->GetModDiaType());
    magnitude = of->GetToleranceMagnitude();
    refinement = of->GetRefinementTol();
    unit1 = of->GetRateUnit1();
    unit2 = of->GetRateUnit2();
    return kSuccess;
  }
  // Attribute and datum are tested, for exactly their class.
  virtual KOVAResult GetDatumTargetCount(const KOVAIdentifier& annotation, unsigned& count) {
    auto* const found = As<ATTRIB_KOVAPMI_DATUM, is_ATTRIB_KOVAPMI_DATUM>(EntityOf(annotation));
    if (found == nullptr || found->identity(0) != ATTRIB_KOVAPMI_DATUM_TYPE) return kFailure;
    auto* const carried = As<KOVAPMI_DATUM, is_KOVAPMI_DATUM>(found->get_datum());
    if (carried == nullptr || carried->identity(0) != KOVAPMI_DATUM_TYPE) return kFailure;
    count = static_cast<unsigned>(carried->get_datumtgt_count());
    return kSuccess;
  }
  virtual KOVAResult GetCalloutFeatureAnnotationProperties(
      const KOVAIdentifier& annotation, KOVAPMICalloutFeatureAnnotationType& type) {
    auto* const found = As<KOVAPMI_DIMENSION, is_KOVAPMI_DIMENSION>(EntityOf(annotation));
    ATTRIB_GEN_NAME* named = nullptr;
    if (found != nullptr) api_find_named_attribute(found, "QENATTRIB_COANNOT_TYPE", named);
    if (is_ATTRIB_GEN_INTEGER(named) != 1) return kFailure;
    const int value = static_cast<ATTRIB_GEN_INTEGER*>(named)->value();
    type = KOVAOrvoPMIEnumUtils::ToEnum(static_cast<callout_feature_annotation_type>(value));
    return kSuccess;
  }

  // --- Look-ups in a list and a map like the index's own ---

  virtual KOVAResult GetNumberOfEntitiesFromAnnotation(const KOVAIdentifier& annotation,
                                                       int& count) {
    const auto found = owners_.find(EntityOf(annotation));
    if (found == owners_.end()) return kFailure;
    count = static_cast<int>(found->second.size());
    return kSuccess;
  }
  virtual KOVAResult GetViewAnnotationCount(const KOVAIdentifier& of, int& count) {
    const auto* const found = views_.Find(of);
    count = found == nullptr ? 0 : static_cast<int>(found->size());
    return kSuccess;
  }

  // --- Strings ---

  virtual KOVAResult GetDatumReferenceLabel(const KOVAIdentifier& of, KOVAString& label) {
    auto* const found = static_cast<KOVAPMI_DREF*>(of.GetNativeObject());
    if (found == nullptr) return kFailure;
    label = KOVAString(found->get_wnote());
    return kSuccess;
  }
  virtual KOVAResult GetAnnotationName(const KOVAIdentifier& annotation, KOVAString& name) {
    ATTRIB_GEN_NAME* named = nullptr;
    api_find_named_attribute(EntityOf(annotation), "ATTRIB_XORVO_NAME", named);
    if (is_ATTRIB_GEN_WSTRING(named) != 1) return kFailure;
    name = KOVAString(static_cast<ATTRIB_GEN_WSTRING*>(named)->value());
    return kSuccess;
  }
  virtual KOVAResult GetDimensionTolerance(const KOVAIdentifier& annotation, double& lower,
                                           double& upper, double& precision, bool& has,
                                           KOVAString& upperText, KOVAString& lowerText) {
    auto* const found = As<KOVAPMI_DIMENSION, is_KOVAPMI_DIMENSION>(EntityOf(annotation));
    if (found == nullptr) return kFailure;
    lower = found->get_dimtol_lower_limit();
    upper = found->get_dimtol_upper_limit();
    precision = found->get_dimtol_precision();
    has = true;
    upperText = KOVAString(found->get_alphanum_tol_upper_val());
    lowerText = KOVAString(found->get_alphanum_tol_lower_val());
    return kSuccess;
  }

 private:
  std::map<ENTITY*, std::vector<ENTITY*>> owners_;
  IdentifierHashMap views_{12, false};
};

// The outputs of a query.
template <typename Class, typename... Arguments>
auto OutputsOf(KOVAResult (Class::*)(const KOVAIdentifier&, Arguments...)) {
  return std::tuple<std::remove_reference_t<Arguments>...>();
}

// Asks an object whose class the compiler can't see; 0 when it fails.
template <auto Query, typename Object>
double CallSeconds(Object* object, int calls, const KOVAIdentifier& identifier) {
  auto outputs = OutputsOf(Query);
  benchmark::DoNotOptimize(object);
  const auto ask = [&](auto&... output) { return (object->*Query)(identifier, output...); };
  if (!std::apply(ask, outputs).IsSuccess()) return 0;
  const double start = measure::Seconds();
  for (int i = 0; i < calls; ++i) {
    benchmark::DoNotOptimize(std::apply(ask, outputs));
    benchmark::ClobberMemory();
  }
  return measure::Seconds() - start;
}

template <auto Query, auto PlainQuery>
void Register(const char* name, Drawing& drawing, const KOVAIdentifier& identifier) {
  measure::Register(name, 41, [&drawing, identifier](benchmark::State& state) {
    constexpr int kCalls = 10000;
    measure::Compare(
        state, kCalls,
        [&] { return CallSeconds<Query>(drawing.exporter.get(), kCalls, identifier); },
        [&] { return CallSeconds<PlainQuery>(&drawing, kCalls, identifier); });
  });
}

}  // namespace

int main(int argc, char** argv) {
  Drawing d;
#define QUERY(ROW, NAME, OBJECT) \
  Register<&KOVAPMIExporter::NAME, &Drawing::NAME>(ROW ":" #NAME, d, OBJECT)
  QUERY("numbers", GetAnnotationType, Naming(d.flag));
  QUERY("numbers", GetAnnotationLeaderCount, Naming(d.flag));
  QUERY("numbers", GetDimensionType, Naming(d.dimension));
  QUERY("numbers", GetDimensionValue, Naming(d.dimension));
  QUERY("numbers", GetToleranceRowInfo, Naming(d.tolerance));
  QUERY("numbers", GetDatumTargetCount, Naming(d.datum));
  QUERY("numbers", GetCalloutFeatureAnnotationProperties, Naming(d.callout));
  QUERY("numbers", GetNumberOfEntitiesFromAnnotation, Naming(d.text));
  QUERY("numbers", GetViewAnnotationCount, d.view);
  QUERY("string", GetDatumReferenceLabel, Naming(d.reference));
  QUERY("string", GetAnnotationName, Naming(d.text));
  QUERY("string", GetDimensionTolerance, Naming(d.dimension));
#undef QUERY
  return measure::Run(argc, argv);
}

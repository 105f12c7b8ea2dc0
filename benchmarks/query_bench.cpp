// Each query beside a virtual call that makes the same kind test and reads the same getter, and the
// queries that walk all views beside a plain loop.
#include <array>
#include <cstring>
#include <deque>
#include <map>
#include <tuple>
#include <utility>

#include "IdentifierHashMap.h"
#include "Measure.h"
#include "Models.h"
#include "framework_orvo/KOVAOrvoDocument.h"
#include "orvo_kernel/api.h"
#include "orvo_kernel/geometry.h"
#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

namespace {

constexpr KOVAResult kSuccess(0);
constexpr KOVAResult kFailure(0x1000001);

KOVAIdentifier Naming(void* object, const char* typeName = nullptr) {
  return KOVAIdentifier(object, typeName, nullptr, nullptr, KOVAIdentifierCastHandle(nullptr));
}
ENTITY* EntityOf(const KOVAIdentifier& identifier) {
  return static_cast<ENTITY*>(identifier.GetNativeObject());
}

// A virtual function of a query's own signature, and outputs for it.
template <typename Body, typename Query>
class Plain;
template <typename Body, typename Class, typename... Arguments>
class Plain<Body, KOVAResult (Class::*)(const KOVAIdentifier&, Arguments...)> {
 public:
  using Outputs = std::tuple<std::remove_cv_t<std::remove_reference_t<Arguments>>...>;
  explicit Plain(Body body) : body_(body) {}
  virtual ~Plain() = default;
  [[gnu::noinline]] virtual KOVAResult Ask(const KOVAIdentifier& identifier,
                                           Arguments... arguments) {
    return body_(identifier, arguments...);
  }

 private:
  Body body_;
};

// Gives an output that is an array its room.
template <typename Output>
void MakeRoom(Output& output, std::deque<std::array<double, 9>>& room) {
  if constexpr (std::is_pointer_v<Output>) {
    output = reinterpret_cast<Output>(room.emplace_back().data());
  }
}

// Asks an object whose class the compiler can't see; 0 when it fails.
template <auto Query, typename Object, typename Outputs>
double CallSeconds(Object* object, int calls, const KOVAIdentifier& identifier, Outputs& outputs) {
  benchmark::DoNotOptimize(object);
  return std::apply(
      [&](auto&... output) {
        if (!(object->*Query)(identifier, output...).IsSuccess()) return 0.0;
        const double start = measure::Seconds();
        for (int i = 0; i < calls; ++i) {
          benchmark::DoNotOptimize((object->*Query)(identifier, output...));
          benchmark::ClobberMemory();
        }
        return measure::Seconds() - start;
      },
      outputs);
}

template <auto Query, typename Body>
void Against(const char* name, KOVAPMIExporter& exporter, const KOVAIdentifier& identifier,
             Body body) {
  using Baseline = Plain<Body, decltype(Query)>;
  measure::Register(name, 41, [&exporter, identifier, body](benchmark::State& state) {
    constexpr int kCalls = 10000;
    Baseline baseline(body);
    std::deque<std::array<double, 9>> room;
    typename Baseline::Outputs ours, plain;
    std::apply([&](auto&... output) { (MakeRoom(output, room), ...); }, ours);
    std::apply([&](auto&... output) { (MakeRoom(output, room), ...); }, plain);
    measure::Compare(
        state, kCalls, [&] { return CallSeconds<Query>(&exporter, kCalls, identifier, ours); },
        [&] { return CallSeconds<&Baseline::Ask>(&baseline, kCalls, identifier, plain); });
  });
}
#define QUERY(ROW, NAME, OBJECT, ...) \
  Against<&KOVAPMIExporter::NAME>(ROW ":" #NAME, exporter, OBJECT, __VA_ARGS__)
#define NUMBERS(...) QUERY("numbers", __VA_ARGS__)
#define STRING(...) QUERY("string", __VA_ARGS__)

// What most queries come to: the kind test, then the getters.
template <typename Kind, int (*Test)(const ENTITY*), typename Read>
auto Tested(Read read) {
  return [read](const KOVAIdentifier& identifier, auto&... outputs) {
    ENTITY* entity = EntityOf(identifier);
    if (Test(entity) != 1) return kFailure;
    read(static_cast<Kind&>(*entity), outputs...);
    return kSuccess;
  };
}
#define TESTED(KIND) Tested<KIND, is_##KIND>

// The same without a test.
template <typename Kind, typename Read>
auto Untested(Read read) {
  return [read](const KOVAIdentifier& identifier, auto&... outputs) {
    auto* object = static_cast<Kind*>(identifier.GetNativeObject());
    if (object == nullptr) return kFailure;
    read(*object, outputs...);
    return kSuccess;
  };
}

// The same of what an attribute carries: both are tested, for exactly their class.
template <typename Attribute, int (*Test)(const ENTITY*), typename Kind,
          int (*TestCarried)(const ENTITY*), typename Read>
auto TestedCarried(Kind* (Attribute::*carried)() const, int attributeType, int type, Read read) {
  return [=](const KOVAIdentifier& identifier, auto&... outputs) {
    ENTITY* entity = EntityOf(identifier);
    if (Test(entity) != 1 || entity->identity(0) != attributeType) return kFailure;
    Kind* object = (static_cast<Attribute*>(entity)->*carried)();
    if (TestCarried(object) != 1 || object->identity(0) != type) return kFailure;
    read(*object, outputs...);
    return kSuccess;
  };
}
#define TESTED_CARRIED(ATTRIBUTE, GETTER, KIND, ...)                                              \
  TestedCarried<ATTRIBUTE, is_##ATTRIBUTE, KIND, is_##KIND>(&ATTRIBUTE::GETTER, ATTRIBUTE##_TYPE, \
                                                            KIND##_TYPE, __VA_ARGS__)
#define TESTED_DATUM(...) \
  TESTED_CARRIED(ATTRIB_KOVAPMI_DATUM, get_datum, KOVAPMI_DATUM, __VA_ARGS__)
#define TESTED_TARGET(...) \
  TESTED_CARRIED(ATTRIB_KOVAPMI_DATUM_TARGET, get_datum_target, KOVAPMI_DATUMTGT, __VA_ARGS__)

// The place of an annotation's kind among all kinds, in the order in which they are tested.
int KindOf(const ENTITY* e) {
  int place = 0;
  const auto is = [&](int test) { return ++place, test == 1; };
  return is(is_ATTRIB_KOVAPMI_TEXT(e)) || is(is_ATTRIB_KOVAPMI_ROUGHNESS(e)) ||
                 is(is_ATTRIB_KOVAPMI_GEOM_TOL(e)) || is(is_KOVAPMI_DIMENSION(e)) ||
                 is(is_ATTRIB_KOVAPMI_DATUM(e)) || is(is_KOVAPMI_DATUM(e)) ||
                 is(is_ATTRIB_KOVAPMI_DATUM_TARGET(e)) || is(is_KOVAPMI_DATUMTGT(e)) ||
                 is(is_ATTRIB_KOVAPMI_FLAGNOTE(e))
             ? place
             : 0;
}

void Put(KOVAString& to, const wchar_t* text) { to = KOVAString(text); }
template <typename Triple, typename Number>
void Put(Number* to, const Triple& from) {
  to[0] = static_cast<Number>(from.x());
  to[1] = static_cast<Number>(from.y());
  to[2] = static_cast<Number>(from.z());
}
template <typename Number>
std::enable_if_t<std::is_arithmetic_v<Number>> Put(Number& to, int count) {
  to = static_cast<Number>(count);
}
template <typename To, typename From>
std::enable_if_t<std::is_enum_v<To> && std::is_enum_v<From>> Put(To& to, From type) {
  to = KOVAOrvoPMIEnumUtils::ToEnum(type);
}

// One getter, one output.
#define GET(GETTER) [](auto& e, auto& out) { Put(out, e.GETTER()); }
#define ONE(KIND, GETTER) TESTED(KIND)(GET(GETTER))

// One object of each kind, everything set.
struct Drawing {
  standin::Part part;
  FACE& face = part.Face();
  ATTRIB_KOVAPMI_TEXT& text = part.AddText(face, L"REMOVE BURRS AND BREAK EDGES");
  ATTRIB_KOVAPMI_FLAGNOTE& flag = part.AddFlagNote(face, L"KEY CHARACTERISTIC");
  ATTRIB_KOVAPMI_ROUGHNESS& roughness = part.AddRoughness(face, {L"Ra 1.6", L"milled"});
  ATTRIB_KOVAPMI_DATUM& datum = part.AddDatum(face, L"A");
  ATTRIB_KOVAPMI_DATUM_TARGET& target = part.AddDatumTarget(face, L"A1", &datum);
  ATTRIB_KOVAPMI_GEOM_TOL& tolerance = part.AddGeometricTolerance(face, tol_flatness, 0.1);
  KOVAPMI_GEOM_TOL_ROW& row = *standin::Edit(tolerance).rows[0];
  KOVAPMI_ZONE_MODIFIER& modifier = part.AddModifier(row, zone_mod_none, 0.2);
  KOVAPMI_DREF& reference = part.AddReference(row, L"A", {&standin::DatumOf(datum)});
  KOVAPMI_DIMENSION& callout = part.MakeCallout(callout_feature_hole, 8);
  KOVAPMI_DIMENSION& dimension =
      part.AddDimension({&face, &callout}, dim_linear, dim_sub_width, 40);
  KOVAPMI_CAPTURE& capture = part.AddCapture({&text, &dimension});
  models::Exporter exporter;

  Drawing() {
    using standin::Edit;
    auto& note = part.Make<KOVAPMI_NOTE>();
    Edit(note) = {L"2X", L"THRU", L"before", L"after", L"upper", L"lower", L"below"};
    Edit(tolerance).note = Edit(dimension).note = &note;
    Edit(dimension).upper_text = L"+0.05";
    Edit(dimension).lower_text = L"-0.05";
    Edit(dimension).hole_callout = L"8 THRU ALL";
    Edit(*row.GetDRF()).note = L"A|B|C";
    Edit(standin::TargetOf(target)).note = L"on the rim";
    Edit(standin::TargetOf(target)).position1 = &part.Make<APOINT>(QENposition(1, 2, 3));
    Edit(standin::TargetOf(target)).position2 = &part.Make<APOINT>(QENposition(4, 5, 6));
    Edit(capture).camera = &part.Make<KOVAPMI_CAMERA>();
    Edit(*capture.GetCamera()).name = L"front";
    Edit(capture).clipping_plane = &part.Make<KOVAPMI_CLIPPINGPLANE>();
    Edit(capture).hidden_text = L"hidden lines";
    auto& display = part.Place(text, {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
    Edit(display).text_properties = &part.Make<KOVAPMI_TEXT_PROPERTIES>();
    part.AddLeader(display, {0, 0, 0}, {1, 1, 1});
    Edit(flag).display = &display;
    part.Name(text, L"General note 12");
    part.Id(text, "5c0e1b52-7f0d-4a39");
    part.Hide(text);
    exporter = models::Index(part);
  }
};

// What the index answers: from lists and maps like its own.
struct {
  KOVAIdentifier set;
  std::vector<KOVAIdentifier> views = std::vector<KOVAIdentifier>(3);
  std::map<ENTITY*, std::vector<ENTITY*>> owners;
  IdentifierHashMap lists{12, false};
} twin;

void RegisterIndexed(Drawing& drawing) {
  auto& exporter = *drawing.exporter;
  KOVAIdentifier view, leader;
  const auto text = Naming(&drawing.text);
  const auto dimension = Naming(&drawing.dimension);
  exporter.GetAnnotationSet(0, twin.set);
  for (int i = 0; view.GetNativeObject() == nullptr; ++i) {
    exporter.GetAnnotationView(twin.set, i, view);
  }
  for (ENTITY* annotation :
       std::vector<ENTITY*>{&drawing.text, &drawing.flag, &drawing.roughness, &drawing.datum,
                            &drawing.target, &drawing.tolerance, &drawing.dimension}) {
    twin.owners[annotation] = {&drawing.face};
    twin.lists.Add(Naming(annotation), {Naming(annotation)});
  }
  twin.lists.Add(view, {text, Naming(&drawing.flag)});
  const auto countOf = [](const KOVAIdentifier& key, int& count) {
    const auto* list = twin.lists.Find(key);
    count = list == nullptr ? 0 : static_cast<int>(list->size());
    return kSuccess;
  };
  NUMBERS(GetAnnotationViewCount, twin.set, [](const KOVAIdentifier&, int& count) {
    count = static_cast<int>(twin.views.size());
    return kSuccess;
  });
  NUMBERS(GetViewAnnotationCount, view, countOf);
  NUMBERS(GetNumberOfEntitiesFromAnnotation, text, [](const KOVAIdentifier& of, int& count) {
    const auto found = twin.owners.find(EntityOf(of));
    if (found == twin.owners.end()) return kFailure;
    count = static_cast<int>(found->second.size());
    return kSuccess;
  });
  NUMBERS(GetCaptureCount, twin.set, [](const KOVAIdentifier& of, unsigned& count) {
    if (of == twin.set) count = static_cast<unsigned>(twin.views.size());
    return kSuccess;
  });
  NUMBERS(GetViewCoordinateSystem, view, [](const KOVAIdentifier& of, float* frame) {
    if (of.GetNativeObject() == nullptr || twin.lists.Find(of) == nullptr) return kFailure;
    const plane& definition = static_cast<const PLANE*>(of.GetNativeObject())->equation();
    Put(frame, definition.root_point);
    Put(frame + 3, definition.u_direction);
    Put(frame + 6, cross(definition.normal, definition.u_direction));
    return kSuccess;
  });
  exporter.GetAnnotationLeader(text, 0, leader);
  NUMBERS(GetLeaderPointCount, leader, [](const KOVAIdentifier& of, int& count) {
    if (!of.IsValid()) return kFailure;
    count = 2;
    return kSuccess;
  });
  NUMBERS(GetLeader3DPoint, leader, [](const KOVAIdentifier& of, int index, double* point) {
    if (!of.IsValid() || std::strcmp(of.GetTypeName(), "KOVAOrvoPMILeader") != 0) return kFailure;
    const auto* e = static_cast<const KOVAPMI_LEADER_GEN*>(of.GetNativeObject());
    Put(point, index == 0 ? e->get_tail_pt() : e->get_head_pt());
    return kSuccess;
  });
}

void RegisterNumbers(Drawing& drawing) {
  auto& exporter = *drawing.exporter;
  const auto text = Naming(&drawing.text);
  const auto flag = Naming(&drawing.flag);
  const auto dimension = Naming(&drawing.dimension);
  const auto tolerance = Naming(&drawing.tolerance);
  const auto roughness = Naming(&drawing.roughness);
  const auto capture = Naming(&drawing.capture);

  const auto kind = Untested<ENTITY>([](auto& e, KOVAPMIAnnotationType& type) {
    type = static_cast<KOVAPMIAnnotationType>(KindOf(&e));
  });
  const auto leaders = Untested<ENTITY>([](auto& e, int& count) {
    const auto* display = KindOf(&e) == 1
                              ? static_cast<ATTRIB_KOVAPMI_TEXT&>(e).get_display_properties()
                              : static_cast<ATTRIB_KOVAPMI_FLAGNOTE&>(e).get_display_properties();
    count = display->get_leaders().count();
  });
  NUMBERS(GetAnnotationType, text, kind);
  NUMBERS(GetAnnotationLeaderCount, text, leaders);
  Against<&KOVAPMIExporter::GetAnnotationType>("numbers:GetAnnotationType, last kind", exporter,
                                               flag, kind);
  Against<&KOVAPMIExporter::GetAnnotationLeaderCount>("numbers:GetAnnotationLeaderCount, last kind",
                                                      exporter, flag, leaders);
  NUMBERS(IsAnnotationHidden, text, Untested<ENTITY>([](auto& e, bool& hidden) {
            int show = 1;
            Ov_AttribTransfer::getShow(&e, show);
            hidden = show == 0;
          }));
  NUMBERS(GetAnnotationTextCount, text,
          TESTED(ATTRIB_KOVAPMI_TEXT)([](auto&, int& count) { count = 1; }));
  NUMBERS(GetTextFont, text,
          TESTED(ATTRIB_KOVAPMI_TEXT)([](auto& e, auto&, auto&, bool& fixed, float& height,
                                         bool& bold, bool& italic, bool& underline, bool& strike,
                                         bool& over, float& ratio, float& slant, auto&) {
            const auto* format = e.get_display_properties()->get_text_properties();
            fixed = format->is_fixed_pitch() != 0;
            height = static_cast<float>(format->get_height());
            bold = format->is_bold() != 0;
            italic = format->is_italic() != 0;
            underline = format->is_underline() != 0;
            strike = format->is_strike_through() != 0;
            over = format->is_overline() != 0;
            ratio = static_cast<float>(format->get_ratio());
            slant = static_cast<float>(format->get_slant());
          }));

  NUMBERS(GetDimensionType, dimension, ONE(KOVAPMI_DIMENSION, get_dimension_subtype));
  NUMBERS(GetDimensionMainType, dimension, ONE(KOVAPMI_DIMENSION, get_dimension_type));
  NUMBERS(GetCalloutFeatureAnnotationProperties, Naming(&drawing.callout),
          TESTED(KOVAPMI_DIMENSION)([](auto& e, auto& type) {
            ATTRIB_GEN_NAME* found = nullptr;
            api_find_named_attribute(&e, "QENATTRIB_COANNOT_TYPE", found);
            if (is_ATTRIB_GEN_INTEGER(found) != 1) return;
            const int value = static_cast<ATTRIB_GEN_INTEGER*>(found)->value();
            Put(type, static_cast<callout_feature_annotation_type>(value));
          }));
  NUMBERS(GetDimensionValue, dimension,
          TESTED(KOVAPMI_DIMENSION)([](auto& e, double& value, auto&, double& precision) {
            value = e.get_dimension_value();
            precision = e.get_dimval_precision();
          }));
  NUMBERS(
      GetCoordDimensionValue, dimension,
      TESTED(KOVAPMI_DIMENSION)([](auto& e, auto&, double& value, double& upper, double& lower) {
        value = e.get_dimension_value();
        upper = e.get_dimtol_upper_limit();
        lower = e.get_dimtol_lower_limit();
      }));

  using ToleranceInfo =
      KOVAResult (KOVAPMIExporter::*)(const KOVAIdentifier&, KOVAPMIToleranceType&, bool&);
  Against<static_cast<ToleranceInfo>(&KOVAPMIExporter::GetToleranceInfo)>(
      "numbers:GetToleranceInfo", exporter, tolerance,
      TESTED(ATTRIB_KOVAPMI_GEOM_TOL)([](auto& e, auto& type, bool& allAround) {
        Put(type, e.get_tolerance_type());
        allAround = e.get_all_around() == 1;
      }));
  NUMBERS(GetToleranceRowCount, tolerance, ONE(ATTRIB_KOVAPMI_GEOM_TOL, get_geom_tol_row_count));
  NUMBERS(GetToleranceRowInfo, tolerance,
          TESTED(ATTRIB_KOVAPMI_GEOM_TOL)([](auto& e, int row, auto& type, double& magnitude,
                                             double& refinement, double& unit1, double& unit2) {
            KOVAPMI_GEOM_TOL_ROW* found = nullptr;
            if (e.get_geom_tol_row_at(row, found) != 1) return;
            Put(type, found->GetModDiaType());
            magnitude = found->GetToleranceMagnitude();
            refinement = found->GetRefinementTol();
            unit1 = found->GetRateUnit1();
            unit2 = found->GetRateUnit2();
          }));
  NUMBERS(GetZoneModifierData, Naming(&drawing.modifier),
          Untested<KOVAPMI_ZONE_MODIFIER>([](auto& e, auto& type, bool& has, double& magnitude) {
            Put(type, e.GetZoneModifierType());
            has = e.GetZoneModifierMagnitude(magnitude);
          }));
  NUMBERS(GetDatumReferenceDatumCount, Naming(&drawing.reference),
          Untested<KOVAPMI_DREF>([](auto& e, int& n) { n = e.GetModifiedDatumCount(); }));
  NUMBERS(GetDatumTargetCount, Naming(&drawing.datum), TESTED_DATUM(GET(get_datumtgt_count)));
  NUMBERS(GetRoughnessObtention, roughness, ONE(ATTRIB_KOVAPMI_ROUGHNESS, get_obtention_type));
  NUMBERS(GetRoughnessApplicability, roughness,
          ONE(ATTRIB_KOVAPMI_ROUGHNESS, get_applicability_type));
  NUMBERS(GetRoughnessFieldCount, roughness, ONE(ATTRIB_KOVAPMI_ROUGHNESS, get_field_count));
  NUMBERS(GetCaptureEntityCount, capture, ONE(KOVAPMI_CAPTURE, GetMembers().iteration_count));
  NUMBERS(HasClippingPlane, capture, TESTED(KOVAPMI_CAPTURE)([](auto& e, bool& has) {
            has = e.GetClippingPlane() != nullptr;
          }));
  NUMBERS(GetActiveView, capture, TESTED(KOVAPMI_CAPTURE)([](auto& e, float* plane) {
            QENposition point;
            QENvector normal;
            e.GetClippingPlane()->GetClippingPlaneData(point, normal);
            Put(plane, point);
            Put(plane + 3, normal);
          }));
}

void RegisterStrings(Drawing& drawing) {
  auto& exporter = *drawing.exporter;
  const auto text = Naming(&drawing.text);
  const auto dimension = Naming(&drawing.dimension);
  const auto tolerance = Naming(&drawing.tolerance);
  const auto target = Naming(&drawing.target);
  const auto capture = Naming(&drawing.capture);

  STRING(GetAnnotationName, text, Untested<ENTITY>([](auto& e, KOVAString& name) {
           ATTRIB_GEN_NAME* found = nullptr;
           api_find_named_attribute(&e, "ATTRIB_XORVO_NAME", found);
           if (is_ATTRIB_GEN_WSTRING(found) != 1) return;
           Put(name, static_cast<ATTRIB_GEN_WSTRING*>(found)->value());
         }));
  STRING(GetPID, text,
         Untested<ENTITY>([](auto& e, KOVAString& id) { Ov_AttribTransfer::getID(&e, id); }));
  STRING(GetTextString, text, ONE(ATTRIB_KOVAPMI_TEXT, get_wtext));
  STRING(GetDimensionTolerance, dimension,
         TESTED(KOVAPMI_DIMENSION)([](auto& e, double& lower, double& upper, double& precision,
                                      bool& has, auto& upperText, auto& lowerText) {
           lower = e.get_dimtol_lower_limit();
           upper = e.get_dimtol_upper_limit();
           precision = e.get_dimtol_precision();
           has = true;
           Put(upperText, e.get_alphanum_tol_upper_val());
           Put(lowerText, e.get_alphanum_tol_lower_val());
         }));
  STRING(
      GetDimensionTexts, dimension,
      TESTED(KOVAPMI_DIMENSION)([](auto& e, auto& prefix, auto& suffix, auto& before, auto& after,
                                   auto& upper, auto& lower, auto& hole, auto& below) {
        const KOVAPMI_NOTE* note = e.GetDimensionNote();
        Put(prefix, note->GetPrefixNote());
        Put(suffix, note->GetSuffixNote());
        Put(before, note->GetBeforeNote());
        Put(after, note->GetAfterNote());
        Put(upper, note->GetUpperNote());
        Put(lower, note->GetLowerNote());
        Put(below, note->GetBelowNote());
        Put(hole, e.GetHoleCalloutAlphaNumericValue());
      }));
#define NOTE(WHICH)                            \
  STRING(Get##WHICH##ToleranceNote, tolerance, \
         ONE(ATTRIB_KOVAPMI_GEOM_TOL, GetPMINote()->Get##WHICH##Note))
  NOTE(Before);
  NOTE(After);
  NOTE(Upper);
  NOTE(Lower);
  NOTE(Prefix);
  NOTE(Suffix);
  using FrameOfRow =
      KOVAResult (KOVAPMIExporter::*)(const KOVAIdentifier&, int, KOVAString&, KOVAIdentifier&);
  Against<static_cast<FrameOfRow>(&KOVAPMIExporter::GetAnnotationAssociatedRefFrame)>(
      "string:GetAnnotationAssociatedRefFrame", exporter, tolerance,
      TESTED(ATTRIB_KOVAPMI_GEOM_TOL)([](auto& e, int row, auto& note, auto& of) {
        KOVAPMI_GEOM_TOL_ROW* found = nullptr;
        if (e.get_geom_tol_row_at(row, found) != 1 || is_KOVAPMI_DRF(found->GetDRF()) != 1) return;
        Put(note, found->GetDRF()->get_wnote());
        of.SetNativeObject(found->GetDRF());
        of.SetTypeName(KOVAPMIExporter::KOVAPMITypeDatumRef);
      }));
  STRING(GetDatumReferenceLabel, Naming(&drawing.reference),
         Untested<KOVAPMI_DREF>([](auto& e, auto& label) { Put(label, e.get_wnote()); }));
  STRING(GetDatumLabel, Naming(&drawing.datum), TESTED_DATUM(GET(get_wlabel)));
  STRING(GetDatumTargetLabel, target, TESTED_TARGET(GET(get_wname)));
  STRING(GetDatumTargetInfo, target,
         TESTED_TARGET(
             [](auto& e, auto& type, auto&, auto&, auto& note, double* first, double* second) {
               Put(type, e.get_datum_target_type());
               Put(note, e.get_wnote());
               Put(first, e.get_position1()->coordinates());
               Put(second, e.get_position2()->coordinates());
             }));
  STRING(GetRoughnessFieldAt, Naming(&drawing.roughness),
         TESTED(ATTRIB_KOVAPMI_ROUGHNESS)([](auto& e, unsigned index, auto& field) {
           Put(field, e.get_wfield_at(static_cast<int>(index)));
         }));
  STRING(GetCaptureHiddenText, capture, ONE(KOVAPMI_CAPTURE, GetHiddenText));
  STRING(
      GetCaptureCameraData, capture,
      TESTED(KOVAPMI_CAPTURE)([](auto& e, auto& name, auto& type, double* origin, double* target,
                                 double* direction, double* normal, double& angle, double& zoom) {
        const KOVAPMI_CAMERA* camera = e.GetCamera();
        const wchar_t* cameraName = nullptr;
        QENposition position;
        QENvector vector;
        camera->GetName(cameraName);
        Put(name, cameraName);
        Put(type, camera->GetType());
        camera->GetViewAngle(angle);
        camera->GetZoom(zoom);
        camera->GetOrigin(position);
        Put(origin, position);
        camera->GetTargetPosition(position);
        Put(target, position);
        camera->GetViewDirection(vector);
        Put(direction, vector);
        camera->GetViewDirectionNormal(vector);
        Put(normal, vector);
      }));
}

// --- Walks ---------------------------------------------------------------------------------------

[[gnu::noinline]] int Holding(const std::vector<std::vector<KOVAIdentifier>>& lists,
                              const void* object) {
  int position = 0;
  for (const auto& list : lists) {
    for (const KOVAIdentifier& identifier : list) {
      if (identifier.GetNativeObject() == object) return position;
    }
    ++position;
  }
  return -1;
}

// Asks for an annotation that no view holds, so that every view is visited.
template <typename Ask>
void Walk(benchmark::State& state, int views, Ask ask) {
  const auto part = models::Dense(views, models::kPlainKinds, models::InPlanes);
  std::vector<std::vector<KOVAIdentifier>> lists;
  for (int i = 0; i < views; ++i)
    lists.push_back({Naming(part->GetEntities()[static_cast<std::size_t>(i)])});
  const auto exporter = models::Index(*part);
  auto& late = part->AddText(part->Face(), L"in no view");
  part->Place(late, {1, 2, 3}, {1, 0, 0}, {0, 0, 1});
  const auto annotation = Naming(&late);
  const int calls = 200000 / views;
  measure::Compare(
      state, static_cast<double>(calls) * views,
      [&] {
        return measure::Time([&] {
          for (int i = 0; i < calls; ++i) benchmark::DoNotOptimize(ask(*exporter, annotation));
        });
      },
      [&] {
        return measure::Time([&] {
          for (int i = 0; i < calls; ++i) benchmark::DoNotOptimize(Holding(lists, &late));
        });
      });
}

}  // namespace

int main(int argc, char** argv) {
  Drawing drawing;
  RegisterIndexed(drawing);
  RegisterNumbers(drawing);
  RegisterStrings(drawing);
  for (int views = 100; views <= 10000; views *= 10) {
    const std::string size = ", " + std::to_string(views) + " views";
    measure::Register("walk_views:GetAnnotationZDepth" + size, 15, [=](auto& state) {
      Walk(state, views, [](KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
        float depth = 0;
        return exporter.GetAnnotationZDepth(annotation, depth);
      });
    });
    measure::Register("walk_views:GetAnnotationPositionInView" + size, 15, [=](auto& state) {
      Walk(state, views, [](KOVAPMIExporter& exporter, const KOVAIdentifier& annotation) {
        KOVAPMIOrientation orientation{};
        float angle = 0;
        float position[2];
        return exporter.GetAnnotationPositionInView(annotation, position, orientation, angle);
      });
    });
  }
  return measure::Run(argc, argv);
}

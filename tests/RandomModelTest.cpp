// What the exporter says of models drawn by lot, against a plain reference.

#include <algorithm>
#include <cstdlib>
#include <set>
#include <sstream>

#include "RandomModel.h"
#include "ReferenceIndex.h"

namespace {

using Asked = KOVAPMIExporter;
using Reference = ReferenceIndex;
using Entities = ReferenceIndex::Entities;

struct Difference {
  std::string words;
};

// Asks an exporter everything that its index answers; throws the first Difference.
class Comparison {
 public:
  Comparison(RandomModel& model, bool late) : model_(model), expected_(model.part) {
    auto& document = model.part.GetDocument();
    document.SetAvailable(!late);
    exporter_ = Export(document);
    document.SetAvailable(true);
    const bool has = !expected_.views.empty() || !expected_.captures.empty();
    Same(exporter_->PreProcess().GetCode(), has ? 0 : 2, "the first pre-processing", nullptr);
    Same(exporter_->PreProcess().GetCode(), 0, "the second pre-processing", nullptr);
    int sets = kUntouched;
    Same(exporter_->GetAnnotationSetCount(sets).GetCode() + sets, has, "set count", nullptr);
    CompareViews();
    for (ENTITY* entity : model.part.GetEntities()) CompareRecord(entity);
    CompareCaptures();
    CompareCaptures();  // asking has made no annotation
    CompareDatums();
    for (ENTITY* entity : model.part.GetEntities()) ComparePlacement(entity);
    for (ENTITY* entity : model.part.GetEntities()) CompareTargets(entity);
    for (ENTITY* entity : model.part.GetEntities()) ComparePlacement(entity);
  }

 private:
  void Put(std::ostream& out, long number) const { out << number; }
  void Put(std::ostream& out, const QENvector& v) const {
    out << v.x() << ' ' << v.y() << ' ' << v.z();
  }
  void Put(std::ostream& out, const Placement::Answers& answers) const { PrintTo(answers, &out); }
  void Put(std::ostream& out, const void* object) const {
    const auto& all = model_.part.GetEntities();
    const auto found = std::find(all.begin(), all.end(), object);
    out << (object == nullptr ? "nothing" : found == all.end() ? "no entity of the model" : "");
    if (found == all.end()) return;
    out << "entity " << found - all.begin() << " of class " << (*found)->identity();
  }
  static bool Equal(long a, long b) { return a == b; }
  static bool Equal(const void* a, const void* b) { return a == b; }
  static bool Equal(const Placement::Answers& a, const Placement::Answers& b) { return a == b; }
  static bool Equal(const QENvector& a, const QENvector& b) {
    return a.x() == b.x() && a.y() == b.y() && a.z() == b.z();
  }
  template <typename Actual, typename Expected>
  void Same(const Actual& actual, const Expected& expected, const char* what, const void* about,
            std::size_t index = 0, const char* which = "") const {
    if (Equal(actual, expected)) return;
    std::ostringstream out;
    Put(out << what << ' ' << index << " of ", about);
    Put(out << which << " is ", actual);
    Put(out << " and must be ", expected);
    throw Difference{out.str()};
  }

  template <typename Id, typename Index, typename Output>
  KOVAResult Ask(KOVAResult (Asked::*query)(Id, Index, Output&), const void* about,
                 std::size_t position, KOVAIdentifier& id) {
    auto index = static_cast<std::decay_t<Index>>(position);
    Output handed{};
    if constexpr (std::is_same_v<Output, KOVAIdentifier>) handed = id;
    const auto result = (exporter_.get()->*query)(Naming(const_cast<void*>(about)), index, handed);
    if constexpr (std::is_same_v<Output, KOVAIdentifier>) id = handed;
    if constexpr (!std::is_same_v<Output, KOVAIdentifier>) {
      if (handed.count() == 1) id = handed.at(0);
    }
    Same(index, static_cast<std::decay_t<Index>>(position), "index", about, position);
    return result;
  }
  // A list's length, its entries and the failures around them. Null: nothing is written.
  template <typename Id, typename Number, typename Query>
  void SameList(const char* what, const void* about, const Entities& expected,
                KOVAResult (Asked::*counting)(Id, Number&), Query query, long code = 0,
                long past = kFailure) {
    Number count = 0;
    const auto counted = (exporter_.get()->*counting)(Naming(const_cast<void*>(about)), count);
    const auto size = static_cast<long>(expected.size());
    Same(counted.GetCode(), code, what, about, 0, ": the count's result");
    Same(static_cast<long>(count), size, what, about, 0, ": the count");
    for (std::size_t i = ~std::size_t{0}; i + 1 <= expected.size() + 1; ++i) {
      KOVAIdentifier id = SentinelIdentifier();
      const bool inside = i < expected.size();
      Same(Ask(query, about, i, id).GetCode(), inside ? 0 : past, what, about, i, ": the result");
      const bool written = inside && (expected[i] != nullptr || about == nullptr);
      Same(id.GetNativeObject(), written ? expected[i] : SentinelIdentifier().GetNativeObject(),
           what, about, i);
    }
  }

  void CompareViews() {
    Entities views;
    for (const auto& [display, annotations] : expected_.views) {
      KOVAIdentifier view;
      Ask(&Asked::GetAnnotationView, nullptr, views.size(), view);
      views.push_back(static_cast<ENTITY*>(view.GetNativeObject()));
      const auto* made = dynamic_cast<PLANE*>(views.back());
      Same(made != nullptr, display != nullptr, "having a plane: view", annotations[0]);
      SameList("annotation of the view", views.back(), annotations, &Asked::GetViewAnnotationCount,
               &Asked::GetViewAnnotation);
      if (display == nullptr) continue;
      const QENvector n = display->get_disp_plane_normal();
      const QENvector root = made->equation().root_point - QENposition();
      Same(root, display->get_disp_pt() - QENposition(), "plane's root", display);
      Same(made->equation().normal, QENunit_vector(n.x(), n.y(), n.z()), "normal", display);
      Same(made->equation().u_direction, display->get_primary_direction(), "u direction", display);
      // From now on no two views of an annotation are alike.
      const auto shift = static_cast<double>(views.size());
      const_cast<plane&>(made->equation()).root_point =
          display->get_disp_pt() + QENvector(shift, 0, shift);
    }
    SameList("view", nullptr, views, &Asked::GetAnnotationViewCount, &Asked::GetAnnotationView);
    Same(static_cast<long>(std::set<ENTITY*>(views.begin(), views.end()).size()),
         static_cast<long>(views.size()), "number of different views", nullptr);
  }

  static Entities ListOf(const std::map<ENTITY*, Entities>& lists, ENTITY* entity) {
    const auto found = lists.find(entity);
    return found == lists.end() ? Entities() : found->second;
  }

  // One entity as an annotation, or as none.
  void CompareRecord(ENTITY* entity) {
    KOVAPMIAnnotationType type{};
    Same(exporter_->GetAnnotationType(Naming(entity), type).GetCode(), 0, "type", entity);
    Same(type, Reference::TypeOf(entity), "type", entity);
    SameList("callout", entity, ListOf(expected_.callouts, entity),
             &Asked::GetCalloutAnnotationCount, &Asked::GetCalloutAnnotationAt);
    CompareOwners(entity, ListOf(expected_.owners, entity), expected_.owners.count(entity) != 0);
  }
  void CompareOwners(ENTITY* entity, const Entities& owners, bool recorded) {
    SameList("owner", entity, owners, &Asked::GetNumberOfEntitiesFromAnnotation,
             &Asked::GetEntityFromAnnotationAt, recorded ? 0 : kFailure);
  }

  void CompareCaptures() {
    for (ENTITY* capture : expected_.captures) {
      Entities members = Reference::Listed(dynamic_cast<KOVAPMI_CAPTURE&>(*capture).GetMembers());
      for (ENTITY*& m : members) m = expected_.owners.count(m) != 0 ? m : nullptr;
      SameList("member", capture, members, &Asked::GetCaptureEntityCount, &Asked::GetCaptureEntity);
    }
    SameList("capture", nullptr, expected_.captures, &Asked::GetCaptureCount, &Asked::GetCapture);
  }

  void ComparePlacement(ENTITY* entity) {
    const auto reached = reachedFrom_.find(entity);
    const Placement placement(*exporter_);
    const auto walked =
        placement.Walked(entity, reached == reachedFrom_.end() ? entity : reached->second);
    for (const KOVAIdentifier& id :
         {Naming(entity), KOVAIdentifier(entity, "misnamed", exporter_.get(), "misnamed",
                                         KOVAIdentifierCastHandle(nullptr))}) {
      Same(placement.Answered(id), walked, "placement", entity);
    }
  }

  // What stands for a datum or target: the attribute that carries it, else it itself.
  static ENTITY* Carrier(const std::map<ENTITY*, ENTITY*>& carriers, ENTITY* object) {
    const auto found = object == nullptr ? carriers.end() : carriers.find(object);
    return found == carriers.end() ? object : found->second;
  }

  void CompareDatums() {
    KOVAPMI_MODIFIED_DATUM* datum = nullptr;
    for (int i = 0; model_.reference->GetDatumAt(i, datum) == 1; ++i) {
      KOVAIdentifier id, owner;
      KOVAIdentifiers modifiers;
      exporter_->GetDatumAt(Naming(model_.reference), i, id, owner, modifiers);
      Same(id.GetNativeObject(), Carrier(expected_.datumCarriers, datum->GetDatum()),
           "reference to the datum", datum->GetDatum());
    }
  }

  // The targets of a datum or of an attribute that carries one, and their owners from then on.
  void CompareTargets(ENTITY* entity) {
    auto* attribute = Reference::As<ATTRIB_KOVAPMI_DATUM>(entity);
    ENTITY* object = attribute ? standin::Edit(*attribute).datum : entity;
    if (attribute && !Reference::IsExactly<ATTRIB_KOVAPMI_DATUM>(entity)) object = nullptr;
    auto* datum = Reference::As<KOVAPMI_DATUM>(object);
    if (datum == nullptr && attribute == nullptr) return;
    Entities targets, carriers;
    for (int i = 0; Reference::IsExactly<KOVAPMI_DATUM>(datum); ++i) {
      if (i == datum->get_datumtgt_count()) break;
      targets.push_back(datum->get_datumtgt_at(i));
      carriers.push_back(Carrier(expected_.targetCarriers, targets.back()));
    }
    const long code = datum ? 0 : kFailure;
    SameList("target", entity, carriers, &Asked::GetDatumTargetCount, &Asked::GetDatumTargetAt,
             code, code);
    for (ENTITY* target : targets) {
      ENTITY* on = target ? dynamic_cast<KOVAPMI_DATUMTGT&>(*target).get_geometry() : nullptr;
      if (target) reachedFrom_[target] = entity;
      if (target) CompareOwners(target, on ? Reference::OwnersOf(on) : Entities(), on != nullptr);
    }
  }

  RandomModel& model_;
  const Reference expected_;
  std::map<ENTITY*, ENTITY*> reachedFrom_;  // target -> the last entity that it was asked of
  std::unique_ptr<KOVAOrvoPMIExporter> exporter_;
};

unsigned FromEnvironment(const char* name, unsigned otherwise) {
  const char* text = std::getenv(name);
  return text == nullptr ? otherwise : static_cast<unsigned>(std::strtoul(text, nullptr, 10));
}

TEST(RandomModel, IsAnsweredAsTheReferenceSaysAndLeftAsItWas) {
  const unsigned only = FromEnvironment("RANDOM_SEED", 0);
  const unsigned last = only != 0 ? only : FromEnvironment("RANDOM_MODELS", 2000);
  for (unsigned seed = only != 0 ? only : 1; seed <= last; ++seed) {
    const standin::UseStdHash form(seed % 2 == 0);
    RandomModel model(seed);
    const auto before = standin::Count();
    try {
      const Comparison comparison(model, seed % 9 == 0);
    } catch (const Difference& difference) {
      FAIL() << "RANDOM_SEED=" << seed << ": " << difference.words;
    }
    const auto after = standin::Count();
    ASSERT_EQ(after.liveEntities, before.liveEntities) << "RANDOM_SEED=" << seed;
    ASSERT_EQ(after.trackedBytes, before.trackedBytes) << "RANDOM_SEED=" << seed;
  }
}

}  // namespace

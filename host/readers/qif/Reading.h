#pragma once

#include <functional>
#include <unordered_map>
#include <unordered_set>

#include "model/Account.h"
#include "readers/qif/Document.h"
#include "readers/qif/Fields.h"
#include "readers/qif/Units.h"

namespace qif {

// A word that documents have for something, and what it means.
template <typename Meaning>
struct Word {
  std::string_view text;
  Meaning meaning;
};

constexpr Word<bool> kBooleans[] = {{"true", true}, {"false", false}, {"1", true}, {"0", false}};
constexpr Word<zone_modifier_type> kMaterialConditions[] = {
    {"NONE", zone_mod_none},
    {"MAXIMUM", zone_mod_maximum_material},
    {"LEAST", zone_mod_least_material},
    {"REGARDLESS", zone_mod_regardless_of_feature_size},
    {"MAXIMUM_RPR", zone_mod_maximum_material_reciprocity},
    {"LEAST_RPR", zone_mod_least_material_reciprocity},
};

// A document being turned into a model: what the steps below share. Each step reads one subject.
class Reading {
 public:
  Reading(std::string_view text, const std::string& name);
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  Document document;
  Units units;
  Model model;
  standin::Part& part;
  std::unordered_set<const ENTITY*> inBody;  // topology that hangs together with a body
  std::unordered_set<const ENTITY*> holeDimensions;

  // The model, when all steps are done.
  Model Finish();

  // --- The account ---

  // Does the work for an annotation or capture; when a value of it cannot be read, it is listed as
  // lost. Elements that are skipped meanwhile are listed under its id, too.
  template <typename Work>
  void Try(Element element, Work work) {
    Under(element.attribute("id").value());
    try {
      work();
    } catch (const Unreadable& problem) {
      lost_.insert(annotation_);
      Lose(element, problem);
    }
    Under({});
  }
  // From here on, what is skipped is listed under this annotation's id; under none when it is
  // empty.
  void Under(std::string_view annotation);

  // Lists what the model lacks: an element, under `id` or its own, that of what it stands in, or
  // that of the annotation.
  void Skip(Severity severity, Element element, const std::string& reason);
  void Skip(Severity severity, Element element, std::string_view id, const std::string& reason);
  // Lists a reference that names nothing in the model as lost, under the element that holds it.
  void Lose(Element reference, const std::string& reason);
  // Lists an element as lost to a value that cannot be read.
  void Lose(Element element, const Unreadable& problem);
  // Lists the fields of a record that were not read, as lost where a field of the name was read
  // before and as reduced otherwise, and its attributes that nobody reads.
  void SkipRest(const Fields& record);
  // Lists only the first of these.
  void SkipDoubled(const Fields& record);
  void Count(const char* kind, long more = 1) { model.counts[kind] += more; }

  // --- Words. What is no word of the list is listed and `otherwise`, as what is missing is. ---

  template <typename Meaning, std::size_t kCount>
  Meaning MeaningOf(Element field, const Word<Meaning> (&words)[kCount], Meaning otherwise) {
    if (!field) return otherwise;
    return Find(words, field, TextOf(field), otherwise, Severity::kLost);
  }
  // Of an attribute.
  template <typename Meaning, std::size_t kCount>
  Meaning MeaningOf(Element of, const char* attribute, const Word<Meaning> (&words)[kCount],
                    Meaning otherwise, Severity severity = Severity::kLost) {
    const Attribute stated = of.attribute(attribute);
    return stated ? Find(words, of, stated.value(), otherwise, severity) : otherwise;
  }
  bool Flag(Element field) { return MeaningOf(field, kBooleans, false); }
  bool Flag(Element of, const char* attribute, Severity severity = Severity::kLost) {
    return MeaningOf(of, attribute, kBooleans, false, severity);
  }
  // The text of a field that many may refer to. One that is too long for that is listed as lost,
  // and empty.
  std::wstring ShortText(Element field);

  // --- Values ---

  // A value of the annotation that is being read. It is kept as written where its unit is not the
  // model's, under the field's name in the report; the one that is described next gets it.
  double Value(const std::string& field, const Quantity& quantity);

  // Gives an entity its document id, its name (when there is one) and its label.
  void Describe(ENTITY& entity, Element element, const char* kind, std::string_view name);

  // --- Associations ---

  // The owner for PMI that applies to these entities: the entity itself, or a collection of
  // several. For PMI that applies to no entity it is an empty collection.
  ENTITY& Carrier(const std::vector<ENTITY*>& entities);

  // The entities that annotations of these owners apply to, each once.
  std::vector<ENTITY*> EntitiesUnder(const std::vector<const ATTRIB*>& annotations);

  // The topology that a reference names. Null, and listed as lost, when it names none.
  ENTITY* EntityAt(Element reference);
  // The topology that a list of references names, each entity once.
  std::vector<ENTITY*> EntitiesOf(Element ids);
  // The topology that a feature, characteristic, datum or note lies on: through the features that
  // it names and directly, in document order, each once.
  std::vector<ENTITY*> AssociatedEntities(Fields& record);
  // The features that an element names itself; with `report`, those that are missing are listed.
  std::vector<Document::Entry*> FeaturesOf(Fields& record, bool report);

  // The annotation that a reference names, by itself or by one of its items; null when there is
  // none. `reason` then says why.
  const Document::Entry* AnnotationAt(Element reference, std::string& reason);

  // The reference frame of an id, made once. `field` is where the report has it.
  KOVAPMI_DRF& Frame(Document::Entry& entry, const std::string& field);
  void SkipUnusedFrames();

 private:
  // What several annotations use is read once. What it lacks is listed for each of them.
  struct Shared {
    std::vector<ENTITY*> entities;  // of a feature
    KOVAPMI_DRF* frame = nullptr;
    std::vector<WrittenValue> written;
    Account account{100};
  };
  using SharedByEntry = std::unordered_map<const Document::Entry*, Shared>;

  // Does the work for a shared element; what it skips and keeps as written goes to `shared`.
  void Share(Shared& shared, Element element, const std::function<void()>& work);
  // Lists for the annotation that is being read what `shared` has, which the report has at `field`.
  void ListAgain(const Shared& shared, const std::string& field = {});

  // Features are looked through to the features that they consist of.
  const Shared& Feature(Document::Entry& feature);
  // Throws Unreadable.
  KOVAPMI_DRF& ReadFrame(Document::Entry& entry);

  void Add(Severity severity, Element element, std::string_view id, const std::string& reason,
           Element place);
  template <typename Meaning, std::size_t kCount>
  Meaning Find(const Word<Meaning> (&words)[kCount], Element at, std::string_view text,
               Meaning otherwise, Severity severity) {
    for (const Word<Meaning>& word : words) {
      if (word.text == text) return word.meaning;
    }
    Skip(severity, at, "what it means by " + Quote(text) + " is not known");
    return otherwise;
  }

  // Counts associations. Throws ModelError when there are more than a model can have.
  void Spend(std::size_t associations);

  Account all_;
  Account* account_ = &all_;
  std::string annotation_;
  std::unordered_set<std::string> lost_;  // annotations that are not in the model
  std::vector<WrittenValue> written_;     // of the annotation that is being read
  QENCOLLECTION& nowhere_;
  SharedByEntry features_, frames_;
  std::size_t associations_ = 0;
  std::size_t mostAssociations_;
};

// --- Steps, in order -----------------------------------------------------------------------------

void ListOtherSections(Reading& reading);
void ReadTopology(Reading& reading);
void ReadDatums(Reading& reading);
void ReadCharacteristics(Reading& reading);
void ReadNotes(Reading& reading);
void ReadDisplays(Reading& reading);
void ReadSavedViews(Reading& reading);

// --- One characteristic --------------------------------------------------------------------------

struct Characteristic {
  std::string_view kind;  // the nominal's name without "CharacteristicNominal"
  Fields& nominal;
  Fields& definition;
};

// Each makes the annotation of a characteristic of its kinds, or gives null for other kinds.
ENTITY* ReadDimension(Reading& reading, const Characteristic& characteristic);
ENTITY* ReadTolerance(Reading& reading, const Characteristic& characteristic);
ENTITY* ReadTexture(Reading& reading, const Characteristic& characteristic);

}  // namespace qif

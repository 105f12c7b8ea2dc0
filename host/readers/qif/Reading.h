#pragma once

#include <functional>
#include <unordered_map>
#include <unordered_set>

#include "model/Account.h"
#include "readers/qif/Document.h"
#include "readers/qif/Fields.h"
#include "readers/qif/Units.h"

namespace qif {

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

  // Does the work for an annotation or capture under its id; a value that cannot be read costs it.
  // What is skipped meanwhile is listed under the id too.
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
  // Lists a reference that names nothing in the model as lost by what it stands in.
  void Lose(Element reference, const std::string& reason);
  // Lists an element as lost to a value that cannot be read.
  void Lose(Element element, const Unreadable& problem);
  // Lists the fields of a record that were not read.
  void SkipRest(const Fields& record);
  void Count(const char* kind, long more = 1) { model.counts[kind] += more; }

  // A value of the annotation that is being read. It is kept as written where its unit is not the
  // model's, under the field's name in the report; the one that is described next gets it.
  double Value(const std::string& field, const Quantity& quantity);

  // Gives an entity its document id, its name (when there is one) and its label.
  void Describe(ENTITY& entity, Element element, const char* kind, std::string_view name);

  // --- Associations ---

  // What PMI on these entities hangs on: the entity itself, or a collection of several. PMI on none
  // hangs on an empty collection, which makes it PMI on no entity.
  ENTITY& Carrier(const std::vector<ENTITY*>& entities);

  // What annotations with such carriers lie on, each entity once.
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

#pragma once

#include <unordered_map>
#include <unordered_set>

#include "readers/qif/Document.h"
#include "readers/qif/Units.h"

namespace qif {

// A document being turned into a model: what the steps below share. Each step reads one subject.
class Reading {
 public:
  Reading(std::string_view text, const std::string& name);

  Document document;
  Units units;
  Model model;
  standin::Part& part;
  BODY* firstBody = nullptr;
  std::unordered_set<const ENTITY*> inBody;  // topology that hangs together with a body
  std::unordered_set<const ENTITY*> holeDimensions;

  // Lists an element that the model lacks under its own id, or under `id`.
  void Skip(Element element, const std::string& reason);
  void Skip(std::string_view kind, std::string_view id, const std::string& reason);
  void Count(const char* kind, long more = 1) { model.counts[kind] += more; }

  // Gives an entity its document id, its name (when there is one) and its label.
  void Describe(ENTITY& entity, Element element, const char* kind, std::string_view name);

  // What PMI on these entities hangs on: the entity itself, or a collection of several. PMI on
  // none hangs on the first body, in a document without bodies on an empty collection.
  ENTITY& Carrier(const std::vector<ENTITY*>& entities);

  // The topology that a reference names. Null, and skipped under `of`, when it names none.
  ENTITY* EntityAt(Element reference, Element of);
  // The topology that a list of references names.
  std::vector<ENTITY*> EntitiesOf(Element ids, Element of);
  // The topology that a feature, characteristic, datum or note lies on: through the features that
  // it names and directly, in document order, each once.
  std::vector<ENTITY*> AssociatedEntities(Element element);
  // Features are looked through to the features that they consist of.
  const std::vector<ENTITY*>& FeatureEntities(Document::Entry& feature);
  // The features that an element names itself; with `report`, those that are missing are skipped.
  std::vector<Document::Entry*> FeaturesOf(Element element, bool report);

  // The annotation that a reference names, by itself or by one of its items; null when there is
  // none. `reason` then says why.
  ENTITY* AnnotationAt(Element reference, std::string& reason);

  // The reference frame of an id, made once.
  KOVAPMI_DRF& Frame(Document::Entry& entry);
  void SkipUnusedFrames();

  // Does the work for one annotation; a value that cannot be read skips the annotation.
  template <typename Work>
  void Try(Element element, Work work) {
    try {
      work();
    } catch (const Unreadable& problem) {
      Skip(element, problem.what());
    }
  }

 private:
  // Counts associations. Throws ModelError when there are more than a model can have.
  void Spend(std::size_t associations);

  std::unordered_map<const Document::Entry*, std::vector<ENTITY*>> features_;
  std::unordered_map<const Document::Entry*, KOVAPMI_DRF*> frames_;
  std::size_t associations_ = 0;
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
  Element nominal;
  Element definition;
  bool firstUse;  // of the definition: what it has too much is skipped once
};

// Each makes the annotation of a characteristic of its kinds, or gives null for other kinds.
ENTITY* ReadDimension(Reading& reading, const Characteristic& characteristic);
ENTITY* ReadTolerance(Reading& reading, const Characteristic& characteristic);
ENTITY* ReadTexture(Reading& reading, const Characteristic& characteristic);

// Skips, under the id of `of`, the fields of an element that the model has no place for: those that
// are not in `known` and not plainly off.
void SkipUnknown(Reading& reading, Element element, Element of,
                 std::initializer_list<std::string_view> known);
// The same for the fields that every nominal or every definition may have, and `known`.
void SkipUnknownOfNominal(Reading& reading, Element nominal,
                          std::initializer_list<std::string_view> known);

}  // namespace qif

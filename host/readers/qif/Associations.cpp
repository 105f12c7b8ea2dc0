// What PMI lies on, and which annotation a reference names.

#include <algorithm>

#include "readers/qif/Reading.h"

namespace qif {

namespace {

bool IsTopology(const ENTITY* entity) {
  return is_FACE(entity) == 1 || is_EDGE(entity) == 1 || is_VERTEX(entity) == 1 ||
         is_BODY(entity) == 1;
}

// Entities in order, each once.
class EntitySet {
 public:
  void Add(ENTITY* entity) {
    if (entity != nullptr && seen_.insert(entity).second) entities_.push_back(entity);
  }
  std::vector<ENTITY*> Take() { return std::move(entities_); }

 private:
  std::vector<ENTITY*> entities_;
  std::unordered_set<const ENTITY*> seen_;
};

// What a reference names, as messages say it.
std::string Named(const char* what, Element reference) {
  return std::string("its ") + what + " " + Quote(TextOf(reference));
}

std::string WhyMissing(const char* what, Element reference) {
  const bool elsewhere = !reference.attribute("xId").empty();
  return Named(what, reference) + (elsewhere ? " is in another document" : " does not exist");
}

}  // namespace

ENTITY& Reading::Carrier(const std::vector<ENTITY*>& entities) {
  if (entities.empty()) return nowhere_;
  if (entities.size() == 1 && inBody.count(entities.front()) != 0) return *entities.front();
  return part.Collection(entities);
}

std::vector<ENTITY*> Reading::EntitiesUnder(const std::vector<const ATTRIB*>& annotations) {
  EntitySet entities;
  for (const ATTRIB* annotation : annotations) {
    ENTITY* const carrier = annotation->owner();
    if (is_QENCOLLECTION(carrier) != 1) {
      entities.Add(carrier);
      continue;
    }
    const ENTITY_LIST& members = static_cast<QENCOLLECTION&>(*carrier).members();
    Spend(static_cast<std::size_t>(members.count()));
    for (int i = 0; i < members.count(); ++i) entities.Add(members[i]);
  }
  return entities.Take();
}

void Reading::Spend(std::size_t associations) {
  associations_ += associations;
  if (associations_ > mostAssociations_) {
    document.Fail(document.Root(), "the document associates too many entities");
  }
}

ENTITY* Reading::EntityAt(Element reference) {
  Spend(1);
  const Document::Entry* const entry = document.Find(reference);
  if (entry == nullptr) {
    Lose(reference, WhyMissing("entity", reference));
  } else if (!IsTopology(entry->entity)) {
    Lose(reference, Named("entity", reference) + " is a " + Quote(NameOf(entry->element)) +
                        ", which the model has not");
  } else {
    return entry->entity;
  }
  return nullptr;
}

std::vector<ENTITY*> Reading::EntitiesOf(Element ids) {
  EntitySet entities;
  for (const Element reference : ids.children()) entities.Add(EntityAt(reference));
  return entities.Take();
}

std::vector<Document::Entry*> Reading::FeaturesOf(Fields& record, bool report) {
  std::vector<Document::Entry*> found;
  const auto add = [&](Element reference) {
    Spend(1);
    Document::Entry* const feature = document.Find(reference);
    if (feature != nullptr) {
      found.push_back(feature);
    } else if (report) {
      Lose(reference, WhyMissing("feature", reference));
    }
  };
  for (const Element reference : record["FeatureNominalIds"].children()) add(reference);
  if (const Element single = record["FeatureNominalId"]) add(single);
  for (const Element pair : record["FeatureNominalPairs"].children()) {
    for (const Element reference : pair.children()) {
      const std::string_view name = NameOf(reference);
      if (name == "FirstFeature" || name == "SecondFeature") add(reference);
    }
  }
  return found;
}

const Reading::Shared& Reading::Feature(Document::Entry& feature) {
  const auto [known, isNew] = features_.try_emplace(&feature);
  Shared& shared = known->second;
  if (!isNew) return shared;
  Share(shared, feature.element, [&] {
    std::vector<Document::Entry*> pending = {&feature};
    std::unordered_set<const Document::Entry*> seen = {&feature};
    while (!pending.empty()) {
      Document::Entry& next = *pending.back();
      pending.pop_back();
      if (IsTopology(next.entity)) {
        shared.entities.push_back(next.entity);
        continue;
      }
      if (!EndsWith(NameOf(next.element), "FeatureNominal")) {
        Lose(next.element, "it is no feature");
        continue;
      }
      Fields fields(next.element);
      const std::vector<ENTITY*> own = EntitiesOf(fields["EntityInternalIds"]);
      shared.entities.insert(shared.entities.end(), own.begin(), own.end());
      const std::vector<Document::Entry*> parts = FeaturesOf(fields, true);
      for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        if (seen.insert(*part).second) pending.push_back(*part);
      }
      const std::vector<ENTITY*> external = EntitiesOf(fields["EntityExternalIds"]);
      shared.entities.insert(shared.entities.end(), external.begin(), external.end());
      SkipDoubled(fields);
    }
  });
  return shared;
}

std::vector<ENTITY*> Reading::AssociatedEntities(Fields& record) {
  EntitySet entities;
  const auto addFeature = [&](Document::Entry& feature) {
    const Shared& shared = Feature(feature);
    Spend(shared.entities.size());
    ListAgain(shared);
    for (ENTITY* entity : shared.entities) entities.Add(entity);
  };
  for (Document::Entry* feature : FeaturesOf(record, true)) addFeature(*feature);
  for (const Element reference : record["EntityInternalIds"].children()) {
    Document::Entry* const entry = document.Find(reference);
    if (entry != nullptr && Child(entry->element, "FeatureDefinitionId")) {
      addFeature(*entry);
    } else {
      entities.Add(EntityAt(reference));
    }
  }
  for (ENTITY* entity : EntitiesOf(record["EntityExternalIds"])) entities.Add(entity);
  return entities.Take();
}

const Document::Entry* Reading::AnnotationAt(Element reference, std::string& reason) {
  const std::string id(WordOf(reference));
  const Document::Entry* entry = document.Find(reference);
  if (entry != nullptr && entry->entity == nullptr) {
    if (const Element nominal = Child(entry->element, "CharacteristicNominalId")) {
      entry = document.Find(nominal);
    }
  }
  if (entry == nullptr) {
    reason = "annotation " + Quote(id) + " does not exist";
  } else if (entry->entity == nullptr) {
    reason = Quote(NameOf(entry->element)) + " " + Quote(id) + " is no annotation of the model";
  } else if (IsTopology(entry->entity) || NameOf(entry->element) == "SavedView") {
    reason = Quote(NameOf(entry->element)) + " " + Quote(id) + " is no annotation";
  } else {
    return entry;
  }
  return nullptr;
}

}  // namespace qif

#include "readers/qif/Reading.h"

#include <algorithm>

namespace qif {

namespace {

// Many more than any drawing has, and few enough to hold. References multiply: a feature of many
// faces may be named by many annotations.
constexpr std::size_t kMostAssociations = 4'000'000;

bool IsTopology(const ENTITY* entity) {
  return is_FACE(entity) == 1 || is_EDGE(entity) == 1 || is_VERTEX(entity) == 1 ||
         is_BODY(entity) == 1;
}

Model EmptyModel() {
  Model model;
  model.part = std::make_unique<standin::Part>();
  return model;
}

Units ReadUnits(const Document& document) {
  try {
    return Units(document);
  } catch (const Unreadable& problem) {
    document.Fail(problem.At(), problem.what());
  }
}

}  // namespace

Reading::Reading(std::string_view text, const std::string& name)
    : document(text, name), units(ReadUnits(document)), model(EmptyModel()), part(*model.part) {
  model.format = "QIF 3.0";
  model.linearUnit = units.LinearUnit();
}

void Reading::Skip(Element element, const std::string& reason) {
  Skip(NameOf(element), element.attribute("id").value(), reason);
}

void Reading::Skip(std::string_view kind, std::string_view id, const std::string& reason) {
  model.skipped.push_back({Severity::kLost, std::string(kind), std::string(id), {}, reason});
}

void Reading::Describe(ENTITY& entity, Element element, const char* kind, std::string_view name) {
  const char* const id = element.attribute("id").value();
  part.Id(entity, id);
  if (!name.empty()) part.Name(entity, Wide(name).c_str());
  model.labels[&entity] = {kind, name.empty() ? id : std::string(name)};
  if (IsTrue(element.attribute("hidden").value())) part.Hide(entity);
}

ENTITY& Reading::Carrier(const std::vector<ENTITY*>& entities) {
  if (entities.size() == 1 && inBody.count(entities.front()) != 0) return *entities.front();
  if (entities.empty() && firstBody != nullptr) return *firstBody;
  return part.Collection(entities);
}

// --- Associations --------------------------------------------------------------------------------

void Reading::Spend(std::size_t associations) {
  associations_ += associations;
  if (associations_ > kMostAssociations) {
    document.Fail(document.Root(), "the document associates too many entities");
  }
}

ENTITY* Reading::EntityAt(Element reference, Element of) {
  Spend(1);
  const Document::Entry* const entry = document.Find(reference);
  const std::string what = "its entity " + std::string(TextOf(reference));
  if (entry == nullptr) {
    const bool elsewhere = !reference.attribute("xId").empty();
    Skip(of, what + (elsewhere ? " is in another document" : " does not exist"));
  } else if (!IsTopology(entry->entity)) {
    Skip(of, what + " is a " + std::string(NameOf(entry->element)) + ", which the model has not");
  } else {
    return entry->entity;
  }
  return nullptr;
}

std::vector<ENTITY*> Reading::EntitiesOf(Element ids, Element of) {
  std::vector<ENTITY*> entities;
  for (const Element reference : ids.children()) {
    ENTITY* const entity = EntityAt(reference, of);
    if (entity != nullptr) entities.push_back(entity);
  }
  return entities;
}

std::vector<Document::Entry*> Reading::FeaturesOf(Element element, bool report) {
  std::vector<Document::Entry*> found;
  const auto add = [&](Element reference) {
    Spend(1);
    Document::Entry* const feature = document.Find(reference);
    if (feature != nullptr) {
      found.push_back(feature);
    } else if (report) {
      Skip(element, "its feature " + std::string(TextOf(reference)) + " does not exist");
    }
  };
  for (const Element reference : Child(element, "FeatureNominalIds").children()) add(reference);
  if (const Element single = Child(element, "FeatureNominalId")) add(single);
  if (!found.empty()) return found;
  for (const Element pair : Child(element, "FeatureNominalPairs").children()) {
    for (const Element reference : pair.children()) {
      const std::string_view name = NameOf(reference);
      if (name == "FirstFeature" || name == "SecondFeature") add(reference);
    }
  }
  return found;
}

const std::vector<ENTITY*>& Reading::FeatureEntities(Document::Entry& feature) {
  const auto [known, isNew] = features_.try_emplace(&feature);
  std::vector<ENTITY*>& entities = known->second;
  if (!isNew) return entities;
  std::vector<Document::Entry*> pending = {&feature};
  std::unordered_set<const Document::Entry*> seen = {&feature};
  while (!pending.empty()) {
    Document::Entry& next = *pending.back();
    pending.pop_back();
    if (IsTopology(next.entity)) {
      entities.push_back(next.entity);
      continue;
    }
    const std::vector<ENTITY*> own =
        EntitiesOf(Child(next.element, "EntityInternalIds"), next.element);
    entities.insert(entities.end(), own.begin(), own.end());
    const std::vector<Document::Entry*> parts = FeaturesOf(next.element, true);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
      if (seen.insert(*part).second) pending.push_back(*part);
    }
  }
  return entities;
}

std::vector<ENTITY*> Reading::AssociatedEntities(Element element) {
  std::vector<ENTITY*> entities;
  std::unordered_set<const ENTITY*> seen;
  const auto add = [&](ENTITY* entity) {
    if (entity != nullptr && seen.insert(entity).second) entities.push_back(entity);
  };
  const auto addFeature = [&](Document::Entry& feature) {
    const std::vector<ENTITY*>& own = FeatureEntities(feature);
    Spend(own.size());
    for (ENTITY* entity : own) add(entity);
  };
  for (Document::Entry* feature : FeaturesOf(element, true)) addFeature(*feature);
  for (const Element reference : Child(element, "EntityInternalIds").children()) {
    Document::Entry* const entry = document.Find(reference);
    if (entry != nullptr && Child(entry->element, "FeatureDefinitionId")) {
      addFeature(*entry);
    } else {
      add(EntityAt(reference, element));
    }
  }
  if (Child(element, "EntityExternalIds")) Skip(element, "its entities are in another document");
  return entities;
}

ENTITY* Reading::AnnotationAt(Element reference, std::string& reason) {
  const std::string id(WordOf(reference));
  const Document::Entry* entry = document.Find(reference);
  if (entry != nullptr && entry->entity == nullptr) {
    if (const Element nominal = Child(entry->element, "CharacteristicNominalId")) {
      entry = document.Find(nominal);
    }
  }
  if (entry == nullptr) {
    reason = "annotation " + id + " does not exist";
  } else if (entry->entity == nullptr) {
    reason = std::string(NameOf(entry->element)) + " " + id + " is no annotation of the model";
  } else if (IsTopology(entry->entity)) {
    reason = std::string(NameOf(entry->element)) + " " + id + " is no annotation";
  } else {
    return entry->entity;
  }
  return nullptr;
}

}  // namespace qif

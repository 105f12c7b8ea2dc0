#include "readers/step/Assembly.h"

#include "readers/step/Reading.h"

namespace step {

namespace {

constexpr int kDeepest = 50;

// A simple instance has its supertype's parameters first, a complex one a record for each.
const Record& RelationshipOf(const Instance& instance) {
  return instance.As("REPRESENTATION_RELATIONSHIP");
}

}  // namespace

Transform Transform::operator*(const Transform& inner) const {
  return {(*this)(inner.x), (*this)(inner.y), (*this)(inner.z), (*this)(inner.origin)};
}

Transform Transform::Inverse() const {
  Transform inverse;
  inverse.x = {x.x(), y.x(), z.x()};
  inverse.y = {x.y(), y.y(), z.y()};
  inverse.z = {x.z(), y.z(), z.z()};
  inverse.origin = QENposition() + -1.0 * inverse(origin - QENposition());
  return inverse;
}

// An assembly of many levels multiplies: more places than a file of that size states by itself.
Assembly::Assembly(Reading& reading) : reading_(reading), most_(1000 + reading.file.Size() / 1000) {
  if (reading.file.Of("NEXT_ASSEMBLY_USAGE_OCCURRENCE").empty()) {
    occurrences_.push_back({});
    return;
  }
  FindItems();
  FindUses();
  std::unordered_set<Id> components;
  for (const auto& [product, uses] : uses_) {
    for (const Use& use : uses) components.insert(use.component);
  }
  for (const char* entity :
       {"PRODUCT_DEFINITION", "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS"}) {
    for (const Id product : reading.file.Of(entity)) {
      if (components.count(product) == 0) Place(product, "", {}, 0);
    }
  }
  if (occurrences_.empty()) {
    reading.file.FailAt(reading.file.Of("NEXT_ASSEMBLY_USAGE_OCCURRENCE").front(),
                        "the assembly has no outermost product");
  }
}

Id Assembly::ProductOfShape(Id shape) {
  const auto [known, isNew] = productOfShape_.try_emplace(shape, 0);
  if (!isNew) return known->second;
  try {
    const Instance* instance = &reading_.Get(shape);
    const std::vector<Id> measured = MeasuredBy(*instance);
    if (!measured.empty()) instance = &reading_.Get(measured.front());
    if (instance->Find("PRODUCT_DEFINITION_SHAPE") == nullptr) {
      instance = &reading_.Get(instance->As("SHAPE_ASPECT").Reference(2));
    }
    const Id definition = instance->As("PROPERTY_DEFINITION").Reference(2);
    if (reading_.Is(definition, "PRODUCT_DEFINITION") ||
        reading_.Is(definition, "PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS")) {
      known->second = definition;
    }
  } catch (const Unreadable&) {
    // It is of no product.
  }
  return known->second;
}

bool Assembly::HasAspects(Id product) {
  const auto [known, isNew] = hasAspects_.try_emplace(product, false);
  if (!isNew) return known->second;
  for (const Id shape : reading_.ReferrersOf(product, "PRODUCT_DEFINITION_SHAPE")) {
    for (const Id user : reading_.file.ReferrersOf(shape)) {
      known->second = known->second || !(reading_.Is(user, "SHAPE_DEFINITION_REPRESENTATION") ||
                                         reading_.Is(user, "PROPERTY_DEFINITION"));
    }
  }
  return known->second;
}

const std::unordered_set<Id>& Assembly::ProductsOfItem(Id item) {
  static const std::unordered_set<Id> none;
  const auto found = productsOfItem_.find(item);
  return found == productsOfItem_.end() ? none : found->second;
}

// A product's shape is a representation and those that are related to it without a motion.
void Assembly::FindItems() {
  std::vector<std::pair<Id, Id>> pending;  // representation, product
  for (const Id use : reading_.file.Of("SHAPE_DEFINITION_REPRESENTATION")) {
    reading_.Try(use, [&] {
      const Record& record = reading_.Get(use).records.front();
      const Id product = ProductOfShape(record.Reference(0));
      if (product != 0) pending.emplace_back(record.Reference(1), product);
    });
  }
  while (!pending.empty()) {
    const auto [representation, product] = pending.back();
    pending.pop_back();
    if (!productsOfRepresentation_[representation].insert(product).second) continue;
    for (const Id id : reading_.ReferrersOf(representation, "SHAPE_REPRESENTATION_RELATIONSHIP")) {
      const Instance& relationship = reading_.Get(id);
      if (relationship.Find("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION") != nullptr) continue;
      const Record& record = RelationshipOf(relationship);
      pending.emplace_back(record.Reference(2), product);
      pending.emplace_back(record.Reference(3), product);
    }
    reading_.Try(representation, [&, representation = representation, product = product] {
      for (const Value& item : reading_.Get(representation).As("REPRESENTATION").List(1)) {
        productsOfItem_[item.Reference()].insert(product);
      }
    });
  }
}

void Assembly::FindUses() {
  for (const Id id : reading_.file.Of("NEXT_ASSEMBLY_USAGE_OCCURRENCE")) {
    reading_.Try(id, [&] {
      const Record& usage = reading_.Get(id).As("NEXT_ASSEMBLY_USAGE_OCCURRENCE");
      Use use{id, usage.Reference(4), {}};
      bool isPlaced = false;
      for (const Id shape : reading_.ReferrersOf(id, "PRODUCT_DEFINITION_SHAPE")) {
        for (const Id placed :
             reading_.ReferrersOf(shape, "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION")) {
          use.transform =
              TransformOf(reading_.Get(placed).records.front().Reference(0), use.component);
          isPlaced = true;
        }
      }
      if (!isPlaced) reading_.Skip(Severity::kReduced, id, "the component's place is not stated");
      uses_[usage.Reference(3)].push_back(use);
    });
  }
}

// The motion takes the component's item to the place of the assembly's.
Transform Assembly::TransformOf(Id id, Id component) {
  const Instance& relationship = reading_.Get(id);
  const Record* const moved = relationship.Find("REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION");
  if (moved == nullptr) return {};
  const Record& representations = RelationshipOf(relationship);
  const Instance& motion = reading_.Get(moved->Reference(moved->count - 1));
  const Record& items = motion.As("ITEM_DEFINED_TRANSFORMATION");
  const auto placed = [&](Id item, Id representation) {
    const Id context = reading_.Get(representation).As("REPRESENTATION").Reference(2);
    const Placement at = reading_.PlacementOf(item, reading_.units.ScaleOf(context));
    return Transform{at.x, cross(at.axis, at.x), at.axis, at.origin};
  };
  const Id first = representations.Reference(2);
  const Transform one = placed(items.Reference(2), first);
  const Transform two = placed(items.Reference(3), representations.Reference(3));
  const bool isFirst = productsOfRepresentation_[first].count(component) != 0;
  return isFirst ? two * one.Inverse() : one * two.Inverse();
}

void Assembly::Place(Id product, const std::string& path, const Transform& transform, int depth) {
  if (depth > kDeepest || occurrences_.size() >= most_) {
    return reading_.Skip(Severity::kLost, product,
                         "its assembly has too many components or levels");
  }
  occurrences_.push_back({path, transform, product, placed_.insert(product).second});
  const auto uses = uses_.find(product);
  if (uses == uses_.end()) return;
  for (const Use& use : uses->second) {
    Place(use.component, path + "#" + std::to_string(use.occurrence) + "/",
          transform * use.transform, depth + 1);
  }
}

}  // namespace step

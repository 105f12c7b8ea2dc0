#pragma once

#include <functional>
#include <unordered_map>
#include <unordered_set>

#include "model/Account.h"
#include "model/Model.h"
#include "readers/step/Assembly.h"
#include "readers/step/Exchange.h"
#include "readers/step/Units.h"

namespace step {

// A right-handed frame: origin, axis and the direction of x, in the model's unit of length.
struct Placement {
  QENposition origin;
  QENvector axis{0, 0, 1};
  QENvector x{1, 0, 0};
};

// A file being turned into a model: what the steps below share. Each step reads one subject.
class Reading {
 public:
  // Throws ModelError for text that is not an exchange structure or not AP242.
  Reading(std::string_view text, const std::string& name);

  Exchange file;
  Units units;
  Model model;
  standin::Part& part;
  std::vector<ENTITY*> wholeShape;              // the bodies of the occurrence's shape
  std::unordered_set<const ENTITY*> inBody;     // topology that hangs together with a body
  std::unordered_map<Id, ENTITY*> topology;     // bodies, faces, edges, vertices
  std::unordered_map<Id, ENTITY*> annotations;  // by the instance that says what it means
  // By callout and annotation occurrence, of all occurrences read so far.
  std::unordered_map<Id, std::vector<ENTITY*>> shown;
  std::size_t pointsLeft;               // that may still be looked at: annotations may share them
  std::unordered_set<Id> listedUsages;  // with an item that is not in the model

  // --- Instances ---

  // An instance. Throws Unreadable when it does not exist.
  const Instance& Get(Id id);
  // Whether an instance is of a class; false when it does not exist.
  bool Is(Id id, std::string_view entity);
  // The name of an item of a representation; empty when it has none or does not exist.
  std::string NameOf(Id item);
  // The instances that refer to one and are of a class.
  std::vector<Id> ReferrersOf(Id id, std::string_view entity);
  QENposition PointOf(Id cartesianPoint, double scale = 1);
  // Where a point of the product's space comes to stand.
  QENposition Placed(const QENposition& point) const;
  Placement PlacementOf(Id axis2Placement, double scale = 1);

  // --- Products ---

  // Begins to read an occurrence: nothing of it is known yet.
  // REQUIRES: both outlive the reading of the occurrence.
  void Begin(Assembly& assembly, const Occurrence& occurrence);
  // Whether a shape aspect, or a product's shape, is of the occurrence's product. One that names
  // no product belongs to the first.
  bool IsOfProduct(Id shape);
  // The same of an annotation's shape; what presents another product's is no note of this one.
  bool IsOfProduct(Id shape, Id annotation);
  bool IsElsewhere(Id annotation) const { return elsewhere_.count(annotation) != 0; }
  // Whether the occurrence's product has an item in its shape.
  bool HasItem(Id item);

  // --- Shared use ---

  // Counts what annotations take of instances that they share, and that multiplies thereby:
  // entities that they are on, members of views, items of lists, sixteen bytes of a text. Throws
  // ModelError when it is more than a file of that size may state.
  void Spend(std::size_t more);
  // Counts a text that is taken.
  std::string Spend(std::string text);

  // --- The model ---

  // Lists what the model lacks of an instance, under the annotation that it belongs to.
  void Skip(Severity severity, Id id, const std::string& reason,
            const ENTITY* annotation = nullptr);
  // Whether the model holds as much as one of that file's size may: parts of assemblies multiply.
  bool IsFull() const {
    return model.labels.size() > 40'000 + file.Size() / 100 || left_ < most_ / 2;
  }
  // Whether an instance says something of PMI.
  bool IsPmi(Id id);
  // Lists references to instances that do not exist and that nothing told of.
  void SkipDangling();
  // Moves the model out, with the account of what is missing.
  Model Finish();
  void Count(const char* kind, long more = 1) { model.counts[kind] += more; }
  // Gives an entity the instance's number, behind the occurrence's path, as id, its name (when
  // there is one) and its label.
  void Describe(ENTITY& entity, Id id, const char* kind, const std::string& name);
  // Notes a value as written where its unit is not the model's.
  void Write(const ENTITY& annotation, const char* field, const Quantity& quantity);
  // The owner for PMI that applies to these entities: the entity itself, or a collection of them.
  ENTITY& Carrier(const std::vector<ENTITY*>& entities);
  // The topology that a shape aspect stands for, in the order of the file, each once.
  const std::vector<ENTITY*>& EntitiesOf(Id aspect);

  // What stands before the ids of the occurrence's entities.
  std::string Path() const { return occurrence_ == nullptr ? "" : occurrence_->path; }

  // Does the work for one annotation; when it can't be read, it is listed as lost.
  template <typename Work>
  void Try(Id id, Work work) {
    try {
      work();
    } catch (const Unreadable& problem) {
      Skip(Severity::kLost, id, problem.what());
    }
  }

 private:
  std::string name_;
  std::size_t most_;  // that may be spent
  std::size_t left_;
  Account account_;
  Assembly* assembly_ = nullptr;
  const Occurrence* occurrence_ = nullptr;
  std::unordered_map<Id, std::vector<ENTITY*>> entitiesOf_;  // by aspect, of this occurrence
  std::unordered_set<Id> elsewhere_;                         // annotations of other products
  std::unordered_map<const ENTITY*, Id> ids_;                // of annotations and captures
};

// --- Steps, in order -----------------------------------------------------------------------------

void ReadTopology(Reading& reading);
void ReadDatums(Reading& reading);
void ReadTolerances(Reading& reading);
void ReadDimensions(Reading& reading);
void ReadPresentation(Reading& reading);
void ReadSavedViews(Reading& reading);

// The aspects that a size or a location is on; none for other instances.
std::vector<Id> MeasuredBy(const Instance& instance);
// The reference frame of a tolerance; null when it names none.
KOVAPMI_DRF* ReadFrame(Reading& reading, const Instance& tolerance);
// Adds the shape and the projection of a tolerance's zones to its row.
void ReadZones(Reading& reading, Id tolerance, KOVAPMI_GEOM_TOL_ROW& row, const ENTITY& annotation);

std::wstring Wide(std::string_view utf8);

}  // namespace step

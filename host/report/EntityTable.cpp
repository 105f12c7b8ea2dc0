#include "report/EntityTable.h"

#include <utility>

#include "report/Answers.h"

EntityReport EntityTable::Use(const KOVAIdentifier& entity, const KOVAIdentifier& annotation,
                              const Text& annotationId) {
  const void* const object = entity.GetNativeObject();
  const auto describe = [&] {
    EntityReport report = names_.entity(object);
    report.id = IdOfObject(exporter_, entity);
    return report;
  };
  // Identifiers of anything but topology, such as another annotation, are the exporter's own.
  if (entity.GetRepresentation() == &exporter_) return describe();
  const auto [row, isNew] = rows_.try_emplace(object, Row{entities_.size(), nullptr});
  if (isNew) entities_.push_back({describe(), {}});
  AppliedEntityReport& applied = entities_[row->second.index];
  if (std::exchange(row->second.lastUser, annotation.GetNativeObject()) !=
      annotation.GetNativeObject()) {
    applied.annotations.push_back(annotationId);
  }
  return applied.entity;
}

std::vector<AppliedEntityReport> EntityTable::Take() {
  rows_.clear();
  return std::exchange(entities_, {});
}

#pragma once

#include <unordered_map>

#include "report/Walk.h"

// The entities that annotations apply to, each once, in the order in which they are first named.
class EntityTable {
 public:
  // REQUIRES: both outlive the table.
  EntityTable(KOVAPMIExporter& exporter, const DocumentNames& names)
      : exporter_(exporter), names_(names) {}

  // The entity that `annotation`, of that id, applies to. A face, edge, vertex or body is entered
  // into the table with the annotation's id, once for every annotation. REQUIRES: all entities of
  // an annotation are named before those of the next.
  EntityReport Use(const KOVAIdentifier& entity, const KOVAIdentifier& annotation,
                   const Text& annotationId);

  // The table; leaves an empty one.
  std::vector<AppliedEntityReport> Take();

 private:
  struct Row {
    std::size_t index;
    const void* lastUser;  // the annotation that named it last
  };

  KOVAPMIExporter& exporter_;
  const DocumentNames& names_;
  std::unordered_map<const void*, Row> rows_;  // by native object
  std::vector<AppliedEntityReport> entities_;
};

#pragma once

#include "framework_core/KOVARepresentation.h"
#include "orvo_kernel/lists.h"

// A document that wraps a model of the kernel.
class KOVAOrvoDocument : public KOVADocument {
 public:
  ~KOVAOrvoDocument() override;

  // Appends the model's top-level entities in the document's order; the document owns them.
  virtual void GetNativeEntityList(ENTITY_LIST& entities) = 0;
};

// Helpers for representations of kernel-backed documents.
class KOVAOrvoEntityUtils {
 public:
  // Makes `identifier` the one under which `representation` exports the entity.
  static void GetExporterIdentifier(ENTITY* entity, const char* typeName,
                                    KOVARepresentation* representation, const char* nativeTypeName,
                                    KOVAIdentifier& identifier);
};

// Reads the framework's own attributes of an entity. Each returns true if the entity carries the
// information.
class Ov_AttribTransfer {
 public:
  // Always writes `current`: true unless the entity is marked as not current.
  static bool getCurrent(ENTITY* entity, bool& current);
  // The persistent identifier; `id` is untouched when there is none.
  static bool getID(ENTITY* entity, KOVAString& id);
  // 0 when the entity is hidden, 1 when it is shown; `show` is untouched when nothing is said.
  static bool getShow(ENTITY* entity, int& show);
};

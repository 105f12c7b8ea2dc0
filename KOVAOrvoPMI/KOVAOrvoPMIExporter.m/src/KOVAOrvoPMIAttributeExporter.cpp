#include "KOVAOrvoPMIAttributeExporter.h"

#include "IdentifierConventions.h"
#include "KernelMemoryManager.h"
#include "ResultCodes.h"
#include "framework_orvo/KOVAOrvoDocument.h"

KOVAOrvoPMIAttributeExporter::KOVAOrvoPMIAttributeExporter() = default;
KOVAOrvoPMIAttributeExporter::KOVAOrvoPMIAttributeExporter(
    const KOVAOrvoPMIAttributeExporter& other) = default;
KOVAOrvoPMIAttributeExporter::~KOVAOrvoPMIAttributeExporter() = default;

KOVAOrvoPMIAttributeExporter& KOVAOrvoPMIAttributeExporter::operator=(
    const KOVAOrvoPMIAttributeExporter& /*other*/) {
  return *this;
}

KOVAResult KOVAOrvoPMIAttributeExporter::GetCurrentState(const KOVAIdentifier& identifier,
                                                         bool& current) const {
  current = false;
  ENTITY* entity = EntityOf(identifier);
  if (entity == nullptr) return Failure;
  Ov_AttribTransfer::getCurrent(entity, current);
  return Success;
}

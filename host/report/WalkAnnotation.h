#pragma once

#include "report/EntityTable.h"

// Everything that an exporter answers about one annotation, with the annotation's values as
// written. Enters the entities that it applies to into the table.
AnnotationReport WalkAnnotation(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation,
                                const DocumentNames& names, EntityTable& entities);

// The exporter's answers about an annotation of one kind. REQUIRES: the annotation is of that kind.
DimensionReport WalkDimension(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation);
ToleranceReport WalkTolerance(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation);
DatumReport WalkDatum(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation);
DatumTargetReport WalkDatumTarget(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation);

#include "framework_pmi/KOVADefaultPMIExporter.h"

const char* const KOVAPMIExporter::KOVAPMITypeAnnotation = "Annotation";
const char* const KOVAPMIExporter::KOVAPMITypeAnnotationView = "AnnotationView";
const char* const KOVAPMIExporter::KOVAPMITypeText = "Text";
const char* const KOVAPMIExporter::KOVAPMITypeDatumRef = "DatumRef";
const char* const KOVAPMIExporter::KOVAPMITypeZoneModifierData = "ZoneModifierData";

KOVAPMIExporter::~KOVAPMIExporter() = default;
KOVAPMIExporterExtended::~KOVAPMIExporterExtended() = default;
KOVADefaultPMIExporter::~KOVADefaultPMIExporter() = default;

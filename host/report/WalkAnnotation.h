#pragma once

#include "report/Walk.h"

// Everything that an exporter answers about one annotation.
AnnotationReport WalkAnnotation(KOVAPMIExporter& exporter, const KOVAIdentifier& annotation,
                                const DocumentNames& names);

// The name of an annotation or capture, absent when it has none.
Text NameOfObject(KOVAPMIExporter& exporter, const KOVAIdentifier& object);

Text TextOf(const KOVAString& string);

#pragma once

#include "framework_pmi/KOVAPMIEnums.h"

// What the report calls the framework's enumerators: their own names, without the enumeration's.
const char* NameOf(KOVAPMIDimensionMainType value);
const char* NameOf(KOVAPMIDimensionType value);
const char* NameOf(KOVAPMICalloutFeatureAnnotationType value);
const char* NameOf(KOVAPMIToleranceType value);
const char* NameOf(KOVAPMIToleranceValueType value);
const char* NameOf(KOVAPMIToleranceModifier value);
const char* NameOf(KOVAPMIDatumTargetType value);
const char* NameOf(KOVAPMIRoughnessObtentionType value);
const char* NameOf(KOVAPMIRoughnessApplicabilityType value);
const char* NameOf(KOVAPMICameraType value);
// The report's keys for kinds of annotations.
const char* NameOf(KOVAPMIAnnotationType value);

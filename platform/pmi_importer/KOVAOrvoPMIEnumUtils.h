#pragma once

#include "framework_pmi/KOVAPMIEnums.h"
#include "pmi_entities/pmi_enums.h"

// What the PMI entity library's enumerations are called in the framework. A value that is none of
// the enumeration's own becomes the framework's first enumerator (unknown, or none).
class KOVAOrvoPMIEnumUtils {
 public:
  static KOVAPMIDimensionMainType ToEnum(dimension_type value);
  static KOVAPMIDimensionType ToEnum(dimension_subtype value);
  static KOVAPMICalloutFeatureAnnotationType ToEnum(callout_feature_annotation_type value);
  static KOVAPMIToleranceType ToEnum(tol_type value);
  static KOVAPMIToleranceValueType ToEnum(mod_dia_type value);
  static KOVAPMIToleranceModifier ToEnum(zone_modifier_type value);
  static KOVAPMIDatumTargetType ToEnum(datum_target_type value);
  static KOVAPMIRoughnessObtentionType ToEnum(roughness_obtention_type value);
  static KOVAPMIRoughnessApplicabilityType ToEnum(roughness_applicability_type value);
  static KOVAPMICameraType ToEnum(camera_type value);
};

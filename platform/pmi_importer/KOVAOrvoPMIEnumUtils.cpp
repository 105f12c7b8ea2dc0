#include "pmi_importer/KOVAOrvoPMIEnumUtils.h"

KOVAPMIDimensionMainType KOVAOrvoPMIEnumUtils::ToEnum(dimension_type value) {
  switch (value) {
    case dim_unknown:
      return DimensionMainTypeUnknown;
    case dim_linear:
      return DimensionMainTypeLinear;
    case dim_angular:
      return DimensionMainTypeAngular;
    case dim_diametral:
      return DimensionMainTypeDiametral;
    case dim_radial:
      return DimensionMainTypeRadial;
    case dim_chamfer:
      return DimensionMainTypeChamfer;
    case dim_curve_length:
      return DimensionMainTypeCurveLength;
    case dim_coordinate:
      return DimensionMainTypeCoordinate;
    case dim_taper:
      return DimensionMainTypeTaper;
    case dim_thread:
      return DimensionMainTypeThread;
    case dim_user_defined:
      return DimensionMainTypeUserDefined;
  }
  return DimensionMainTypeUnknown;
}

KOVAPMIDimensionType KOVAOrvoPMIEnumUtils::ToEnum(dimension_subtype value) {
  switch (value) {
    case dim_sub_unknown:
      return DimensionTypeUnknown;
    case dim_sub_distance:
      return DimensionTypeDistance;
    case dim_sub_length:
      return DimensionTypeLength;
    case dim_sub_width:
      return DimensionTypeWidth;
    case dim_sub_height:
      return DimensionTypeHeight;
    case dim_sub_depth:
      return DimensionTypeDepth;
    case dim_sub_thickness:
      return DimensionTypeThickness;
    case dim_sub_diameter:
      return DimensionTypeDiameter;
    case dim_sub_spherical_diameter:
      return DimensionTypeSphericalDiameter;
    case dim_sub_radius:
      return DimensionTypeRadius;
    case dim_sub_spherical_radius:
      return DimensionTypeSphericalRadius;
    case dim_sub_angle:
      return DimensionTypeAngle;
    case dim_sub_angle_between:
      return DimensionTypeAngleBetween;
    case dim_sub_chord:
      return DimensionTypeChord;
    case dim_sub_curve_length:
      return DimensionTypeCurveLength;
    case dim_sub_chamfer:
      return DimensionTypeChamfer;
    case dim_sub_square:
      return DimensionTypeSquare;
    case dim_sub_linear_coordinate:
      return DimensionTypeLinearCoordinate;
    case dim_sub_angular_coordinate:
      return DimensionTypeAngularCoordinate;
    case dim_sub_conical_taper:
      return DimensionTypeConicalTaper;
    case dim_sub_flat_taper:
      return DimensionTypeFlatTaper;
    case dim_sub_thread:
      return DimensionTypeThread;
    case dim_sub_user_defined:
      return DimensionTypeUserDefined;
  }
  return DimensionTypeUnknown;
}

KOVAPMICalloutFeatureAnnotationType KOVAOrvoPMIEnumUtils::ToEnum(
    callout_feature_annotation_type value) {
  switch (value) {
    case callout_feature_unknown:
      return CalloutFeatureAnnotationTypeUnknown;
    case callout_feature_hole:
      return CalloutFeatureAnnotationTypeHole;
    case callout_feature_counterbore:
      return CalloutFeatureAnnotationTypeCounterbore;
    case callout_feature_countersink:
      return CalloutFeatureAnnotationTypeCountersink;
    case callout_feature_spotface:
      return CalloutFeatureAnnotationTypeSpotface;
    case callout_feature_depth:
      return CalloutFeatureAnnotationTypeDepth;
    case callout_feature_thread:
      return CalloutFeatureAnnotationTypeThread;
    case callout_feature_chamfer:
      return CalloutFeatureAnnotationTypeChamfer;
  }
  return CalloutFeatureAnnotationTypeUnknown;
}

KOVAPMIToleranceType KOVAOrvoPMIEnumUtils::ToEnum(tol_type value) {
  switch (value) {
    case tol_unknown:
      return ToleranceTypeUnknown;
    case tol_straightness:
      return ToleranceTypeStraightness;
    case tol_flatness:
      return ToleranceTypeFlatness;
    case tol_circularity:
      return ToleranceTypeCircularity;
    case tol_cylindricity:
      return ToleranceTypeCylindricity;
    case tol_conicity:
      return ToleranceTypeConicity;
    case tol_sphericity:
      return ToleranceTypeSphericity;
    case tol_ellipticity:
      return ToleranceTypeEllipticity;
    case tol_toroidicity:
      return ToleranceTypeToroidicity;
    case tol_other_form:
      return ToleranceTypeOtherForm;
    case tol_line_profile:
      return ToleranceTypeLineProfile;
    case tol_surface_profile:
      return ToleranceTypeSurfaceProfile;
    case tol_point_profile:
      return ToleranceTypePointProfile;
    case tol_angularity:
      return ToleranceTypeAngularity;
    case tol_perpendicularity:
      return ToleranceTypePerpendicularity;
    case tol_parallelism:
      return ToleranceTypeParallelism;
    case tol_position:
      return ToleranceTypePosition;
    case tol_concentricity:
      return ToleranceTypeConcentricity;
    case tol_coaxiality:
      return ToleranceTypeCoaxiality;
    case tol_symmetry:
      return ToleranceTypeSymmetry;
    case tol_circular_runout:
      return ToleranceTypeCircularRunout;
    case tol_total_runout:
      return ToleranceTypeTotalRunout;
  }
  return ToleranceTypeUnknown;
}

KOVAPMIToleranceValueType KOVAOrvoPMIEnumUtils::ToEnum(mod_dia_type value) {
  switch (value) {
    case mod_dia_none:
      return ToleranceValueTypeNone;
    case mod_dia_diametrical:
      return ToleranceValueTypeDiametrical;
    case mod_dia_spherical:
      return ToleranceValueTypeSpherical;
    case mod_dia_square:
      return ToleranceValueTypeSquare;
    case mod_dia_radial:
      return ToleranceValueTypeRadial;
  }
  return ToleranceValueTypeNone;
}

KOVAPMIToleranceModifier KOVAOrvoPMIEnumUtils::ToEnum(zone_modifier_type value) {
  switch (value) {
    case zone_mod_none:
      return ToleranceModifierNone;
    case zone_mod_maximum_material:
      return ToleranceModifierMaximumMaterial;
    case zone_mod_least_material:
      return ToleranceModifierLeastMaterial;
    case zone_mod_regardless_of_feature_size:
      return ToleranceModifierRegardlessOfFeatureSize;
    case zone_mod_maximum_material_reciprocity:
      return ToleranceModifierMaximumMaterialReciprocity;
    case zone_mod_least_material_reciprocity:
      return ToleranceModifierLeastMaterialReciprocity;
    case zone_mod_projected_zone:
      return ToleranceModifierProjectedZone;
    case zone_mod_free_state:
      return ToleranceModifierFreeState;
    case zone_mod_tangent_plane:
      return ToleranceModifierTangentPlane;
    case zone_mod_statistical_tolerance:
      return ToleranceModifierStatisticalTolerance;
    case zone_mod_unequally_disposed:
      return ToleranceModifierUnequallyDisposed;
    case zone_mod_unilateral_zone:
      return ToleranceModifierUnilateralZone;
    case zone_mod_translation:
      return ToleranceModifierTranslation;
    case zone_mod_common_zone:
      return ToleranceModifierCommonZone;
    case zone_mod_major_diameter:
      return ToleranceModifierMajorDiameter;
    case zone_mod_minor_diameter:
      return ToleranceModifierMinorDiameter;
    case zone_mod_pitch_diameter:
      return ToleranceModifierPitchDiameter;
    case zone_mod_any_cross_section:
      return ToleranceModifierAnyCrossSection;
    case zone_mod_any_longitudinal_section:
      return ToleranceModifierAnyLongitudinalSection;
    case zone_mod_specific_cross_section:
      return ToleranceModifierSpecificCrossSection;
    case zone_mod_point:
      return ToleranceModifierPoint;
    case zone_mod_straight_line:
      return ToleranceModifierStraightLine;
    case zone_mod_plane:
      return ToleranceModifierPlane;
    case zone_mod_contacting_feature:
      return ToleranceModifierContactingFeature;
    case zone_mod_distance_variable:
      return ToleranceModifierDistanceVariable;
    case zone_mod_orientation_only:
      return ToleranceModifierOrientationOnly;
    case zone_mod_maximum_tolerance:
      return ToleranceModifierMaximumTolerance;
    case zone_mod_each_radial_element:
      return ToleranceModifierEachRadialElement;
    case zone_mod_datum_shift:
      return ToleranceModifierDatumShift;
    case zone_mod_basic:
      return ToleranceModifierBasic;
    case zone_mod_boundary:
      return ToleranceModifierBoundary;
  }
  return ToleranceModifierNone;
}

KOVAPMIDatumTargetType KOVAOrvoPMIEnumUtils::ToEnum(datum_target_type value) {
  switch (value) {
    case datum_target_unknown:
      return DatumTargetTypeUnknown;
    case datum_target_point:
      return DatumTargetTypePoint;
    case datum_target_line:
      return DatumTargetTypeLine;
    case datum_target_circle:
      return DatumTargetTypeCircle;
    case datum_target_rectangle:
      return DatumTargetTypeRectangle;
    case datum_target_area:
      return DatumTargetTypeArea;
  }
  return DatumTargetTypeUnknown;
}

KOVAPMIRoughnessObtentionType KOVAOrvoPMIEnumUtils::ToEnum(roughness_obtention_type value) {
  switch (value) {
    case roughness_obtention_unknown:
      return RoughnessObtentionTypeUnknown;
    case roughness_obtention_unspecified:
      return RoughnessObtentionTypeUnspecified;
    case roughness_obtention_machining_mandatory:
      return RoughnessObtentionTypeMachiningMandatory;
    case roughness_obtention_machining_forbidden:
      return RoughnessObtentionTypeMachiningForbidden;
  }
  return RoughnessObtentionTypeUnknown;
}

KOVAPMIRoughnessApplicabilityType KOVAOrvoPMIEnumUtils::ToEnum(roughness_applicability_type value) {
  switch (value) {
    case roughness_applicability_unknown:
      return RoughnessApplicabilityTypeUnknown;
    case roughness_applicability_specified_surface_only:
      return RoughnessApplicabilityTypeSpecifiedSurfaceOnly;
    case roughness_applicability_all_part_surfaces:
      return RoughnessApplicabilityTypeAllPartSurfaces;
    case roughness_applicability_basic_surface:
      return RoughnessApplicabilityTypeBasicSurface;
  }
  return RoughnessApplicabilityTypeUnknown;
}

KOVAPMICameraType KOVAOrvoPMIEnumUtils::ToEnum(camera_type value) {
  switch (value) {
    case camera_unknown:
      return CameraTypeUnknown;
    case camera_parallel:
      return CameraTypeParallel;
    case camera_perspective:
      return CameraTypePerspective;
  }
  return CameraTypeUnknown;
}

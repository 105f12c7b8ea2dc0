#pragma once

// Enumerations of the framework's PMI interface.

// Kind of an annotation. The numbers are the framework's; those left out are kinds that no model of
// the kernel holds.
enum KOVAPMIAnnotationType : int {
  AnnotationTypeUnknown = 0,
  AnnotationTypeDatum = 2,
  AnnotationTypeDatumTarget = 3,
  AnnotationTypeText = 4,
  AnnotationTypeRoughness = 6,
  AnnotationTypeGeometricTolerance = 7,
  AnnotationTypeDimension = 9,
  AnnotationTypeFlagNote = 11,
};

// Which way a text runs.
enum KOVAPMIOrientation : int { OrientationUnknown, OrientationHorizontal, OrientationVertical };

// Unit of a value.
enum KOVAPMIUnit : int { UnitUnknown, UnitMillimetre, UnitInch, UnitDegree, UnitRadian };

// Symbol at the end of a dimension line (ASME Y14.2, ISO 129-1).
enum KOVAPMIArrowSymbol : int {
  ArrowSymbolNone,
  ArrowSymbolFilledArrow,
  ArrowSymbolOpenArrow,
  ArrowSymbolDot,
  ArrowSymbolOblique
};

// Family of a character font.
enum KOVAPMIFont : int { FontUnknown, FontStroke, FontOutline };

// What a dimension measures, in the large.
enum KOVAPMIDimensionMainType : int {
  DimensionMainTypeUnknown,
  DimensionMainTypeLinear,
  DimensionMainTypeAngular,
  DimensionMainTypeDiametral,
  DimensionMainTypeRadial,
  DimensionMainTypeChamfer,
  DimensionMainTypeCurveLength,
  DimensionMainTypeCoordinate,
  DimensionMainTypeTaper,
  DimensionMainTypeThread,
  DimensionMainTypeUserDefined,
};

// What a dimension measures, in detail (ASME Y14.5, ISO 129-1).
enum KOVAPMIDimensionType : int {
  DimensionTypeUnknown,
  DimensionTypeDistance,
  DimensionTypeLength,
  DimensionTypeWidth,
  DimensionTypeHeight,
  DimensionTypeDepth,
  DimensionTypeThickness,
  DimensionTypeDiameter,
  DimensionTypeSphericalDiameter,
  DimensionTypeRadius,
  DimensionTypeSphericalRadius,
  DimensionTypeAngle,
  DimensionTypeAngleBetween,
  DimensionTypeChord,
  DimensionTypeCurveLength,
  DimensionTypeChamfer,
  DimensionTypeSquare,
  DimensionTypeLinearCoordinate,
  DimensionTypeAngularCoordinate,
  DimensionTypeConicalTaper,
  DimensionTypeFlatTaper,
  DimensionTypeThread,
  DimensionTypeUserDefined,
};

// The feature that a callout dimension belongs to (ASME Y14.5 counterbore, countersink, spotface,
// depth).
enum KOVAPMICalloutFeatureAnnotationType : int {
  CalloutFeatureAnnotationTypeUnknown,
  CalloutFeatureAnnotationTypeHole,
  CalloutFeatureAnnotationTypeCounterbore,
  CalloutFeatureAnnotationTypeCountersink,
  CalloutFeatureAnnotationTypeSpotface,
  CalloutFeatureAnnotationTypeDepth,
  CalloutFeatureAnnotationTypeThread,
  CalloutFeatureAnnotationTypeChamfer,
};

// Geometric characteristic (ASME Y14.5, ISO 1101).
enum KOVAPMIToleranceType : int {
  ToleranceTypeUnknown,
  ToleranceTypeStraightness,
  ToleranceTypeFlatness,
  ToleranceTypeCircularity,
  ToleranceTypeCylindricity,
  ToleranceTypeConicity,
  ToleranceTypeSphericity,
  ToleranceTypeEllipticity,
  ToleranceTypeToroidicity,
  ToleranceTypeOtherForm,
  ToleranceTypeLineProfile,
  ToleranceTypeSurfaceProfile,
  ToleranceTypePointProfile,
  ToleranceTypeAngularity,
  ToleranceTypePerpendicularity,
  ToleranceTypeParallelism,
  ToleranceTypePosition,
  ToleranceTypeConcentricity,
  ToleranceTypeCoaxiality,
  ToleranceTypeSymmetry,
  ToleranceTypeCircularRunout,
  ToleranceTypeTotalRunout,
};

// Shape of a tolerance zone as written before its value (ASME Y14.5, ISO 1101).
enum KOVAPMIToleranceValueType : int {
  ToleranceValueTypeNone,
  ToleranceValueTypeDiametrical,
  ToleranceValueTypeSpherical,
  ToleranceValueTypeSquare,
  ToleranceValueTypeRadial,
};

// Modifier of a tolerance zone or of a datum in a frame (ASME Y14.5, ISO 1101, ISO 2692, ISO 5459).
enum KOVAPMIToleranceModifier : int {
  ToleranceModifierNone,
  ToleranceModifierMaximumMaterial,
  ToleranceModifierLeastMaterial,
  ToleranceModifierRegardlessOfFeatureSize,
  ToleranceModifierMaximumMaterialReciprocity,
  ToleranceModifierLeastMaterialReciprocity,
  ToleranceModifierProjectedZone,
  ToleranceModifierFreeState,
  ToleranceModifierTangentPlane,
  ToleranceModifierStatisticalTolerance,
  ToleranceModifierUnequallyDisposed,
  ToleranceModifierUnilateralZone,
  ToleranceModifierTranslation,
  ToleranceModifierCommonZone,
  ToleranceModifierMajorDiameter,
  ToleranceModifierMinorDiameter,
  ToleranceModifierPitchDiameter,
  ToleranceModifierAnyCrossSection,
  ToleranceModifierAnyLongitudinalSection,
  ToleranceModifierSpecificCrossSection,
  ToleranceModifierPoint,
  ToleranceModifierStraightLine,
  ToleranceModifierPlane,
  ToleranceModifierContactingFeature,
  ToleranceModifierDistanceVariable,
  ToleranceModifierOrientationOnly,
  ToleranceModifierMaximumTolerance,
  ToleranceModifierEachRadialElement,
  ToleranceModifierDatumShift,
  ToleranceModifierBasic,
  ToleranceModifierBoundary,
};

// Form of a datum target (ASME Y14.5, ISO 5459).
enum KOVAPMIDatumTargetType : int {
  DatumTargetTypeUnknown,
  DatumTargetTypePoint,
  DatumTargetTypeLine,
  DatumTargetTypeCircle,
  DatumTargetTypeRectangle,
  DatumTargetTypeArea,
};

// Whether material has to be removed to get the surface (ISO 21920-1, ASME Y14.36).
enum KOVAPMIRoughnessObtentionType : int {
  RoughnessObtentionTypeUnknown,
  RoughnessObtentionTypeUnspecified,
  RoughnessObtentionTypeMachiningMandatory,
  RoughnessObtentionTypeMachiningForbidden,
};

// The surfaces that a texture symbol speaks of (ISO 21920-1, ASME Y14.36).
enum KOVAPMIRoughnessApplicabilityType : int {
  RoughnessApplicabilityTypeUnknown,
  RoughnessApplicabilityTypeSpecifiedSurfaceOnly,
  RoughnessApplicabilityTypeAllPartSurfaces,
  RoughnessApplicabilityTypeBasicSurface,
};

// Projection of a saved view.
enum KOVAPMICameraType : int {
  CameraTypeUnknown,
  CameraTypeParallel,
  CameraTypePerspective,
};

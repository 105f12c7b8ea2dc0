#include "report/EnumNames.h"

#include <cstddef>

namespace {

template <std::size_t N, typename Enum>
const char* NameIn(const char* const (&names)[N], Enum value) {
  const auto index = static_cast<std::size_t>(value);
  return index < N ? names[index] : names[0];
}

}  // namespace

const char* NameOf(KOVAPMIDimensionMainType value) {
  static const char* const names[] = {"unknown", "linear",  "angular",     "diametral",
                                      "radial",  "chamfer", "curveLength", "coordinate",
                                      "taper",   "thread",  "userDefined"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMIDimensionType value) {
  static const char* const names[] = {"unknown",
                                      "distance",
                                      "length",
                                      "width",
                                      "height",
                                      "depth",
                                      "thickness",
                                      "diameter",
                                      "sphericalDiameter",
                                      "radius",
                                      "sphericalRadius",
                                      "angle",
                                      "angleBetween",
                                      "chord",
                                      "curveLength",
                                      "chamfer",
                                      "square",
                                      "linearCoordinate",
                                      "angularCoordinate",
                                      "conicalTaper",
                                      "flatTaper",
                                      "thread",
                                      "userDefined"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMICalloutFeatureAnnotationType value) {
  static const char* const names[] = {"unknown",  "hole",  "counterbore", "countersink",
                                      "spotface", "depth", "thread",      "chamfer"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMIToleranceType value) {
  static const char* const names[] = {
      "unknown",        "straightness",   "flatness",      "circularity", "cylindricity",
      "conicity",       "sphericity",     "ellipticity",   "toroidicity", "otherForm",
      "lineProfile",    "surfaceProfile", "pointProfile",  "angularity",  "perpendicularity",
      "parallelism",    "position",       "concentricity", "coaxiality",  "symmetry",
      "circularRunout", "totalRunout"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMIToleranceValueType value) {
  static const char* const names[] = {"none", "diametrical", "spherical", "square", "radial"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMIToleranceModifier value) {
  static const char* const names[] = {"none",
                                      "maximumMaterial",
                                      "leastMaterial",
                                      "regardlessOfFeatureSize",
                                      "maximumMaterialReciprocity",
                                      "leastMaterialReciprocity",
                                      "projectedZone",
                                      "freeState",
                                      "tangentPlane",
                                      "statisticalTolerance",
                                      "unequallyDisposed",
                                      "unilateralZone",
                                      "translation",
                                      "commonZone",
                                      "majorDiameter",
                                      "minorDiameter",
                                      "pitchDiameter",
                                      "anyCrossSection",
                                      "anyLongitudinalSection",
                                      "specificCrossSection",
                                      "point",
                                      "straightLine",
                                      "plane",
                                      "contactingFeature",
                                      "distanceVariable",
                                      "orientationOnly",
                                      "maximumTolerance",
                                      "eachRadialElement",
                                      "datumShift",
                                      "basic",
                                      "boundary"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMIDatumTargetType value) {
  static const char* const names[] = {"unknown", "point", "line", "circle", "rectangle", "area"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMIRoughnessObtentionType value) {
  static const char* const names[] = {"unknown", "unspecified", "machiningMandatory",
                                      "machiningForbidden"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMIRoughnessApplicabilityType value) {
  static const char* const names[] = {"unknown", "specifiedSurfaceOnly", "allPartSurfaces",
                                      "basicSurface"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMICameraType value) {
  static const char* const names[] = {"unknown", "parallel", "perspective"};
  return NameIn(names, value);
}

const char* NameOf(KOVAPMIAnnotationType value) {
  switch (value) {
    case AnnotationTypeText:
      return "text";
    case AnnotationTypeRoughness:
      return "roughness";
    case AnnotationTypeGeometricTolerance:
      return "geometricTolerance";
    case AnnotationTypeDimension:
      return "dimension";
    case AnnotationTypeDatum:
      return "datum";
    case AnnotationTypeDatumTarget:
      return "datumTarget";
    case AnnotationTypeFlagNote:
      return "flagNote";
    case AnnotationTypeUnknown:
      break;
  }
  return "unknown";
}

#pragma once

#include <string_view>

#include "writers/qif/Units.h"

namespace qif_writer {

// A dimension by its name in the report, and its characteristic.
struct DimensionKind {
  std::string_view report;
  const char* name;  // without "CharacteristicDefinition"
  Measure measure = Measure::kLength;
  // What its nominal has to say besides, which the report does not tell.
  const char* field = nullptr;
  const char* value = nullptr;
  const char* mark = "";                // drawn before the value
  const char* whatToMeasure = nullptr;  // of what QIF leaves to its users
};

constexpr DimensionKind kDimensionKinds[] = {
    {"distance", "DistanceBetween", Measure::kLength, "AnalysisMode", "THREEDIMENSIONAL"},
    {"length", "Length"},
    {"width", "Width"},
    {"height", "Height"},
    {"depth", "Depth"},
    {"thickness", "Thickness"},
    {"diameter", "Diameter", Measure::kLength, nullptr, nullptr, "\u2300"},
    {"sphericalDiameter", "SphericalDiameter", Measure::kLength, nullptr, nullptr, "S\u2300"},
    {"radius", "Radius", Measure::kLength, nullptr, nullptr, "R"},
    {"sphericalRadius", "SphericalRadius", Measure::kLength, nullptr, nullptr, "SR"},
    {"angle", "Angle", Measure::kAngle},
    {"angleBetween", "AngleBetween", Measure::kAngle, "AnalysisMode", "THREEDIMENSIONAL"},
    {"chord", "Chord"},
    {"curveLength", "CurveLength"},
    {"square", "Square", Measure::kLength, nullptr, nullptr, "\u25A1"},
    {"thread", "Thread"},
    {"userDefined", "UserDefinedLinear", Measure::kLength, nullptr, nullptr, "", "not stated"},
    // The characteristics of these ask for an axis or a distance, which the report does not tell.
    {"linearCoordinate", "UserDefinedLinear", Measure::kLength, nullptr, nullptr, "",
     "linear coordinate"},
    {"angularCoordinate", "UserDefinedAngular", Measure::kAngle, nullptr, nullptr, "",
     "angular coordinate"},
    {"conicalTaper", "UserDefinedLinear", Measure::kLength, nullptr, nullptr, "", "conical taper"},
    {"flatTaper", "UserDefinedLinear", Measure::kLength, nullptr, nullptr, "", "flat taper"},
};

// What a tolerance's definition has besides its value.
enum Has : unsigned {
  kNothing = 0,
  kMaterial = 1,          // a material condition, which may be left out
  kMaterialRequired = 2,  // one that may not
  kFrame = 4,
  kMaximum = 8,
  kProjected = 16,
  kTangent = 32,
  kEach = 64,
  kOrientationOnly = 128,
  kDisposition = 256,
  kExtent = 512,
  kVector = 1024,  // its nominal has a direction
};

struct ToleranceKind {
  std::string_view report;
  const char* name;
  unsigned has = kNothing;
  // The zones that it can have, each by its first letter: diametrical, spherical, planar,
  // non-diametrical.
  std::string_view zones = "";
  const char* segment = nullptr;  // of a composite tolerance
  std::size_t rows = 1;
};

constexpr unsigned kProfile = kFrame | kOrientationOnly | kDisposition;
constexpr unsigned kOrientation =
    kFrame | kMaterial | kMaterialRequired | kTangent | kMaximum | kProjected | kEach;
constexpr ToleranceKind kToleranceKinds[] = {
    {"straightness", "Straightness", kMaterial | kMaximum, "dn"},
    {"flatness", "Flatness", kMaterial | kMaximum},
    {"circularity", "Circularity"},
    {"cylindricity", "Cylindricity"},
    {"conicity", "Conicity"},
    {"sphericity", "Sphericity"},
    {"ellipticity", "Ellipticity"},
    {"toroidicity", "Toroidicity"},
    {"otherForm", "OtherForm"},
    {"lineProfile", "LineProfile", kProfile | kExtent | kVector, "", "Profile", 4},
    {"surfaceProfile", "SurfaceProfile", kProfile | kExtent, "", "Profile", 4},
    {"pointProfile", "PointProfile", kProfile, "", "Profile", 4},
    {"angularity", "Angularity", kOrientation, "dp"},
    {"perpendicularity", "Perpendicularity", kOrientation, "dp"},
    {"parallelism", "Parallelism", kOrientation, "dp"},
    {"position", "Position",
     kFrame | kMaterial | kMaterialRequired | kMaximum | kProjected | kOrientationOnly, "dsn",
     "Position", 4},
    {"concentricity", "Concentricity", kFrame, "dsn"},
    {"coaxiality", "Coaxiality", kFrame, "dn"},
    {"symmetry", "Symmetry", kFrame, "", "Symmetry", 3},
    {"circularRunout", "CircularRunout", kFrame},
    {"totalRunout", "TotalRunout", kFrame},
};

// The kind of a name in the report, or null.
template <typename Kind, std::size_t kCount>
const Kind* KindOf(const Kind (&kinds)[kCount], const Text& name) {
  for (const Kind& kind : kinds) {
    if (name == std::string(kind.report)) return &kind;
  }
  return nullptr;
}

}  // namespace qif_writer

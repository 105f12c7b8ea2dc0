#pragma once

#include <string_view>

#include "standin/Part.h"

namespace qif {

// What a dimension measures, which tells its unit.
enum class Measure { kLength, kAngle, kPlain };

// A characteristic that is a dimension.
struct DimensionKind {
  std::string_view name;
  dimension_type type;
  dimension_subtype subtype;
  Measure measure = Measure::kLength;
  // Where a feature's definition has the size, when the characteristic states none.
  const char* field = nullptr;
  const char* otherField = nullptr;
  double otherFactor = 1;
};

constexpr DimensionKind kDimensionKinds[] = {
    {"Length", dim_linear, dim_sub_length, Measure::kLength, "Length"},
    {"Width", dim_linear, dim_sub_width, Measure::kLength, "Width"},
    {"Height", dim_linear, dim_sub_height},
    {"Depth", dim_linear, dim_sub_depth, Measure::kLength, "Depth"},
    {"Thickness", dim_linear, dim_sub_thickness},
    {"Square", dim_linear, dim_sub_square, Measure::kLength, "Width"},
    {"DistanceFrom", dim_linear, dim_sub_distance},
    {"DistanceBetween", dim_linear, dim_sub_distance},
    {"Chord", dim_linear, dim_sub_chord},
    {"CurveLength", dim_curve_length, dim_sub_curve_length, Measure::kLength, "Length"},
    {"Diameter", dim_diametral, dim_sub_diameter, Measure::kLength, "Diameter", "Radius", 2},
    {"SphericalDiameter", dim_diametral, dim_sub_spherical_diameter, Measure::kLength, "Diameter"},
    {"Radius", dim_radial, dim_sub_radius, Measure::kLength, "Radius", "Diameter", 0.5},
    {"SphericalRadius", dim_radial, dim_sub_spherical_radius, Measure::kLength, nullptr, "Diameter",
     0.5},
    {"Angle", dim_angular, dim_sub_angle, Measure::kAngle, "FullAngle", "TaperAngle"},
    {"AngleFrom", dim_angular, dim_sub_angle_between, Measure::kAngle},
    {"AngleBetween", dim_angular, dim_sub_angle_between, Measure::kAngle},
    {"LinearCoordinate", dim_coordinate, dim_sub_linear_coordinate},
    {"AngularCoordinate", dim_coordinate, dim_sub_angular_coordinate, Measure::kAngle},
    {"ConicalTaper", dim_taper, dim_sub_conical_taper},
    {"FlatTaper", dim_taper, dim_sub_flat_taper},
    {"Thread", dim_thread, dim_sub_thread},
    {"UserDefinedLinear", dim_user_defined, dim_sub_user_defined},
    {"UserDefinedAngular", dim_user_defined, dim_sub_user_defined, Measure::kAngle},
    {"UserDefinedTemperature", dim_unknown, dim_sub_unknown, Measure::kPlain},
    {"UserDefinedArea", dim_unknown, dim_sub_unknown, Measure::kPlain},
    {"UserDefinedForce", dim_unknown, dim_sub_unknown, Measure::kPlain},
    {"UserDefinedMass", dim_unknown, dim_sub_unknown, Measure::kPlain},
    {"UserDefinedPressure", dim_unknown, dim_sub_unknown, Measure::kPlain},
    {"UserDefinedSpeed", dim_unknown, dim_sub_unknown, Measure::kPlain},
    {"UserDefinedTime", dim_unknown, dim_sub_unknown, Measure::kPlain},
    {"UserDefinedUnit", dim_unknown, dim_sub_unknown, Measure::kPlain},
};

}  // namespace qif

#pragma once

#include <string_view>

#include "standin/Part.h"

namespace step {

struct DimensionKind {
  std::string_view name;  // as the size or location is called
  dimension_type type;
  dimension_subtype subtype;
};

inline constexpr DimensionKind kDimensionKinds[] = {
    {"angle", dim_angular, dim_sub_angle},
    {"curve length", dim_curve_length, dim_sub_curve_length},
    {"curved distance", dim_curve_length, dim_sub_curve_length},
    {"diameter", dim_diametral, dim_sub_diameter},
    {"height", dim_linear, dim_sub_height},
    {"length", dim_linear, dim_sub_length},
    {"linear distance", dim_linear, dim_sub_distance},
    {"radius", dim_radial, dim_sub_radius},
    {"spherical diameter", dim_diametral, dim_sub_spherical_diameter},
    {"spherical radius", dim_radial, dim_sub_spherical_radius},
    {"thickness", dim_linear, dim_sub_thickness},
    {"toroidal minor diameter", dim_diametral, dim_sub_diameter},
    {"toroidal major diameter", dim_diametral, dim_sub_diameter},
    {"toroidal minor radius", dim_radial, dim_sub_radius},
    {"toroidal major radius", dim_radial, dim_sub_radius},
    {"width", dim_linear, dim_sub_width},
};

// The kind that a size or location is called by, with more behind it at times: "linear distance
// inner inner". Without a name when it is called by none.
inline DimensionKind KindOf(std::string_view name, bool isSize, bool isAngular) {
  if (isAngular) return {"", dim_angular, isSize ? dim_sub_angle : dim_sub_angle_between};
  DimensionKind kind = {"", dim_linear, isSize ? dim_sub_length : dim_sub_distance};
  for (const DimensionKind& known : kDimensionKinds) {
    const bool isCalled = name.substr(0, known.name.size()) == known.name;
    if (isCalled && known.name.size() > kind.name.size()) kind = known;
  }
  return kind;
}

}  // namespace step

#pragma once

// Enumerations of the PMI entity library.

// What a dimension measures, in the large.
enum dimension_type : int {
  dim_unknown,
  dim_linear,
  dim_angular,
  dim_diametral,
  dim_radial,
  dim_chamfer,
  dim_curve_length,
  dim_coordinate,
  dim_taper,
  dim_thread,
  dim_user_defined,
};

// What a dimension measures, in detail (ASME Y14.5, ISO 129-1).
enum dimension_subtype : int {
  dim_sub_unknown,
  dim_sub_distance,
  dim_sub_length,
  dim_sub_width,
  dim_sub_height,
  dim_sub_depth,
  dim_sub_thickness,
  dim_sub_diameter,
  dim_sub_spherical_diameter,
  dim_sub_radius,
  dim_sub_spherical_radius,
  dim_sub_angle,
  dim_sub_angle_between,
  dim_sub_chord,
  dim_sub_curve_length,
  dim_sub_chamfer,
  dim_sub_square,
  dim_sub_linear_coordinate,
  dim_sub_angular_coordinate,
  dim_sub_conical_taper,
  dim_sub_flat_taper,
  dim_sub_thread,
  dim_sub_user_defined,
};

// The feature that a callout dimension belongs to (ASME Y14.5).
enum callout_feature_annotation_type : int {
  callout_feature_unknown,
  callout_feature_hole,
  callout_feature_counterbore,
  callout_feature_countersink,
  callout_feature_spotface,
  callout_feature_depth,
  callout_feature_thread,
  callout_feature_chamfer,
};

// Geometric characteristic (ASME Y14.5, ISO 1101).
enum tol_type : int {
  tol_unknown,
  tol_straightness,
  tol_flatness,
  tol_circularity,
  tol_cylindricity,
  tol_conicity,
  tol_sphericity,
  tol_ellipticity,
  tol_toroidicity,
  tol_other_form,
  tol_line_profile,
  tol_surface_profile,
  tol_point_profile,
  tol_angularity,
  tol_perpendicularity,
  tol_parallelism,
  tol_position,
  tol_concentricity,
  tol_coaxiality,
  tol_symmetry,
  tol_circular_runout,
  tol_total_runout,
};

// Shape of a tolerance zone as written before its value.
enum mod_dia_type : int {
  mod_dia_none,
  mod_dia_diametrical,
  mod_dia_spherical,
  mod_dia_square,
  mod_dia_radial,
};

// Modifier of a tolerance zone or of a datum in a frame (ASME Y14.5, ISO 1101, ISO 2692, ISO 5459).
enum zone_modifier_type : int {
  zone_mod_none,
  zone_mod_maximum_material,
  zone_mod_least_material,
  zone_mod_regardless_of_feature_size,
  zone_mod_maximum_material_reciprocity,
  zone_mod_least_material_reciprocity,
  zone_mod_projected_zone,
  zone_mod_free_state,
  zone_mod_tangent_plane,
  zone_mod_statistical_tolerance,
  zone_mod_unequally_disposed,
  zone_mod_unilateral_zone,
  zone_mod_translation,
  zone_mod_common_zone,
  zone_mod_major_diameter,
  zone_mod_minor_diameter,
  zone_mod_pitch_diameter,
  zone_mod_any_cross_section,
  zone_mod_any_longitudinal_section,
  zone_mod_specific_cross_section,
  zone_mod_point,
  zone_mod_straight_line,
  zone_mod_plane,
  zone_mod_contacting_feature,
  zone_mod_distance_variable,
  zone_mod_orientation_only,
  zone_mod_maximum_tolerance,
  zone_mod_each_radial_element,
  zone_mod_datum_shift,
  zone_mod_basic,
  zone_mod_boundary,
};

// Form of a datum target (ASME Y14.5, ISO 5459).
enum datum_target_type : int {
  datum_target_unknown,
  datum_target_point,
  datum_target_line,
  datum_target_circle,
  datum_target_rectangle,
  datum_target_area,
};

// Whether material has to be removed to get the surface (ISO 21920-1, ASME Y14.36).
enum roughness_obtention_type : int {
  roughness_obtention_unknown,
  roughness_obtention_unspecified,
  roughness_obtention_machining_mandatory,
  roughness_obtention_machining_forbidden,
};

// The surfaces that a texture symbol speaks of (ISO 21920-1, ASME Y14.36).
enum roughness_applicability_type : int {
  roughness_applicability_unknown,
  roughness_applicability_specified_surface_only,
  roughness_applicability_all_part_surfaces,
  roughness_applicability_basic_surface,
};

// Projection of a saved view.
enum camera_type : int {
  camera_unknown,
  camera_parallel,
  camera_perspective,
};

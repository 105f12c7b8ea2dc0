#pragma once

#include "orvo_kernel/model.h"
#include "pmi_entities/pmi_properties.h"

// --- Dimensions ----------------------------------------------------------------------------------

// A dimension: the collection of the entities that it measures. Lengths in model length units,
// angles in degrees.
class KOVAPMI_DIMENSION : public QENCOLLECTION {
  ORVO_ENTITY_IDENTITY(KOVAPMI_DIMENSION, QENCOLLECTION)

 public:
  struct fields {
    dimension_type type = dim_unknown;
    dimension_subtype subtype = dim_sub_unknown;
    double value = 0;
    double value_precision = 0;  // decimal places; negative: no value is stated
    double upper_limit = 0;
    double lower_limit = 0;
    double tolerance_precision = 0;  // decimal places; negative: no tolerance is stated
    pmi_text upper_text, lower_text, hole_callout;
    KOVAPMI_NOTE* note = nullptr;
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
    std::vector<QENposition> line;             // none or two
    std::vector<QENposition> extension_lines;  // none or three
  };

  dimension_type get_dimension_type() const { return fields_.type; }
  dimension_subtype get_dimension_subtype() const { return fields_.subtype; }
  double get_dimension_value() const { return fields_.value; }
  double get_dimval_precision() const { return fields_.value_precision; }
  double get_dimtol_upper_limit() const { return fields_.upper_limit; }
  double get_dimtol_lower_limit() const { return fields_.lower_limit; }
  double get_dimtol_precision() const { return fields_.tolerance_precision; }
  const wchar_t* get_alphanum_tol_upper_val() const { return pmi_text_pointer(fields_.upper_text); }
  const wchar_t* get_alphanum_tol_lower_val() const { return pmi_text_pointer(fields_.lower_text); }
  const wchar_t* GetHoleCalloutAlphaNumericValue() const {
    return pmi_text_pointer(fields_.hole_callout);
  }
  KOVAPMI_NOTE* GetDimensionNote() const { return fields_.note; }
  KOVAPMI_DISPLAY_PROPERTIES* get_display_properties() const { return fields_.display; }
  // The ends of the dimension line, model coordinates; 1 when there are any.
  int get_dimension_line_extremities(QENposition& first, QENposition& second) const;
  // The points of the extension lines, model coordinates; 1 when there are any.
  int GetExtensionLines(QENposition& first, QENposition& second, QENposition& third) const;

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_DIMENSION);

// --- Datums --------------------------------------------------------------------------------------

// A datum target.
class KOVAPMI_DATUMTGT : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_DATUMTGT, ENTITY)

 public:
  struct fields {
    pmi_text name, note;
    datum_target_type type = datum_target_unknown;
    APOINT* position1 = nullptr;
    APOINT* position2 = nullptr;
    ENTITY* geometry = nullptr;
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
  };

  const wchar_t* get_wname() const { return pmi_text_pointer(fields_.name); }
  const wchar_t* get_wnote() const { return pmi_text_pointer(fields_.note); }
  datum_target_type get_datum_target_type() const { return fields_.type; }
  APOINT* get_position1() const { return fields_.position1; }
  APOINT* get_position2() const { return fields_.position2; }
  // What the target lies on.
  ENTITY* get_geometry() const { return fields_.geometry; }
  KOVAPMI_DISPLAY_PROPERTIES* get_display_properties() const { return fields_.display; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_DATUMTGT);

// A datum feature's datum.
class KOVAPMI_DATUM : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_DATUM, ENTITY)

 public:
  struct fields {
    pmi_text label;
    std::vector<KOVAPMI_DATUMTGT*> targets;
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
  };

  const wchar_t* get_wlabel() const { return pmi_text_pointer(fields_.label); }
  int get_datumtgt_count() const { return static_cast<int>(fields_.targets.size()); }
  // Null outside the list.
  KOVAPMI_DATUMTGT* get_datumtgt_at(int index) const;
  KOVAPMI_DISPLAY_PROPERTIES* get_display_properties() const { return fields_.display; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_DATUM);

// --- Geometric tolerances ------------------------------------------------------------------------

// A modifier of a tolerance zone or of a datum in a frame; its magnitude in model length units.
class KOVAPMI_ZONE_MODIFIER : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_ZONE_MODIFIER, ENTITY)

 public:
  struct fields {
    zone_modifier_type type = zone_mod_none;
    std::optional<double> magnitude;
  };

  zone_modifier_type GetZoneModifierType() const { return fields_.type; }
  // True if the modifier has a magnitude, which is then written.
  bool GetZoneModifierMagnitude(double& magnitude) const;

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_ZONE_MODIFIER);

// A datum as a reference names it, with its modifiers.
class KOVAPMI_MODIFIED_DATUM : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_MODIFIED_DATUM, ENTITY)

 public:
  struct fields {
    KOVAPMI_DATUM* datum = nullptr;
    std::vector<KOVAPMI_ZONE_MODIFIER*> modifiers;
  };

  KOVAPMI_DATUM* GetDatum() const { return fields_.datum; }
  int GetModifierCount() const { return static_cast<int>(fields_.modifiers.size()); }
  // Null outside the list.
  KOVAPMI_ZONE_MODIFIER* GetZoneModifierAt(int index) const;

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_MODIFIED_DATUM);

// A datum reference: one compartment of a frame, one datum or a common datum.
class KOVAPMI_DREF : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_DREF, ENTITY)

 public:
  struct fields {
    pmi_text note;
    std::vector<KOVAPMI_MODIFIED_DATUM*> datums;
  };

  const wchar_t* get_wnote() const { return pmi_text_pointer(fields_.note); }
  int GetModifiedDatumCount() const { return static_cast<int>(fields_.datums.size()); }
  // 1 for an index of the list, counted from 0; else 0, `datum` untouched.
  int GetDatumAt(int index, KOVAPMI_MODIFIED_DATUM*& datum) const;

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_DREF);

// A datum reference frame.
class KOVAPMI_DRF : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_DRF, ENTITY)

 public:
  struct fields {
    pmi_text note;
    std::vector<KOVAPMI_DREF*> references;
  };

  const wchar_t* get_wnote() const { return pmi_text_pointer(fields_.note); }
  int get_dref_count() const { return static_cast<int>(fields_.references.size()); }
  // Null outside the list.
  KOVAPMI_DREF* get_dref_at(int index) const;

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_DRF);

// A row of a feature control frame. Model length units; a unit angle in degrees.
class KOVAPMI_GEOM_TOL_ROW : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_GEOM_TOL_ROW, ENTITY)

 public:
  struct fields {
    mod_dia_type zone_shape = mod_dia_none;
    double magnitude = 0;
    double refinement = 0;
    double rate_unit1 = 0;
    double rate_unit2 = 0;
    std::vector<KOVAPMI_ZONE_MODIFIER*> modifiers;
    KOVAPMI_DRF* frame = nullptr;
  };

  mod_dia_type GetModDiaType() const { return fields_.zone_shape; }
  double GetToleranceMagnitude() const { return fields_.magnitude; }
  double GetRefinementTol() const { return fields_.refinement; }
  double GetRateUnit1() const { return fields_.rate_unit1; }
  double GetRateUnit2() const { return fields_.rate_unit2; }
  int GetZoneModifierCount() const { return static_cast<int>(fields_.modifiers.size()); }
  // Null outside the list.
  KOVAPMI_ZONE_MODIFIER* GetZoneModifierAt(int index) const;
  KOVAPMI_DRF* GetDRF() const { return fields_.frame; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_GEOM_TOL_ROW);

// --- PMI attributes: what hangs on the entity it speaks of ---------------------------------------

#define PMI_ATTRIBUTE(NAME)          \
  ORVO_ENTITY_IDENTITY(NAME, ATTRIB) \
 public:                             \
  explicit NAME(ENTITY* owner) : ATTRIB(owner) {}

class ATTRIB_KOVAPMI_TEXT : public ATTRIB {
  PMI_ATTRIBUTE(ATTRIB_KOVAPMI_TEXT)

  struct fields {
    pmi_text text;
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
  };

  const wchar_t* get_wtext() const { return pmi_text_pointer(fields_.text); }
  KOVAPMI_DISPLAY_PROPERTIES* get_display_properties() const { return fields_.display; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(ATTRIB_KOVAPMI_TEXT);

class ATTRIB_KOVAPMI_FLAGNOTE : public ATTRIB {
  PMI_ATTRIBUTE(ATTRIB_KOVAPMI_FLAGNOTE)

  struct fields {
    pmi_text text;
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
  };

  const wchar_t* get_wtext() const { return pmi_text_pointer(fields_.text); }
  KOVAPMI_DISPLAY_PROPERTIES* get_display_properties() const { return fields_.display; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(ATTRIB_KOVAPMI_FLAGNOTE);

class ATTRIB_KOVAPMI_ROUGHNESS : public ATTRIB {
  PMI_ATTRIBUTE(ATTRIB_KOVAPMI_ROUGHNESS)

  struct fields {
    roughness_obtention_type obtention = roughness_obtention_unknown;
    roughness_applicability_type applicability = roughness_applicability_unknown;
    std::vector<pmi_text> texts;  // the symbol's fields
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
  };

  roughness_obtention_type get_obtention_type() const { return fields_.obtention; }
  roughness_applicability_type get_applicability_type() const { return fields_.applicability; }
  int get_field_count() const { return static_cast<int>(fields_.texts.size()); }
  // Null outside the list.
  const wchar_t* get_wfield_at(int index) const;
  KOVAPMI_DISPLAY_PROPERTIES* get_display_properties() const { return fields_.display; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(ATTRIB_KOVAPMI_ROUGHNESS);

class ATTRIB_KOVAPMI_DATUM : public ATTRIB {
  PMI_ATTRIBUTE(ATTRIB_KOVAPMI_DATUM)

  struct fields {
    // A KOVAPMI_DATUM; a damaged model may hold another entity here.
    ENTITY* datum = nullptr;
  };

  KOVAPMI_DATUM* get_datum() const { return reinterpret_cast<KOVAPMI_DATUM*>(fields_.datum); }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(ATTRIB_KOVAPMI_DATUM);

class ATTRIB_KOVAPMI_DATUM_TARGET : public ATTRIB {
  PMI_ATTRIBUTE(ATTRIB_KOVAPMI_DATUM_TARGET)

  struct fields {
    // A KOVAPMI_DATUMTGT; a damaged model may hold another entity here.
    ENTITY* target = nullptr;
  };

  KOVAPMI_DATUMTGT* get_datum_target() const {
    return reinterpret_cast<KOVAPMI_DATUMTGT*>(fields_.target);
  }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(ATTRIB_KOVAPMI_DATUM_TARGET);

// A geometric tolerance.
class ATTRIB_KOVAPMI_GEOM_TOL : public ATTRIB {
  PMI_ATTRIBUTE(ATTRIB_KOVAPMI_GEOM_TOL)

  struct fields {
    tol_type type = tol_unknown;
    int all_around = 0;
    std::vector<KOVAPMI_GEOM_TOL_ROW*> rows;
    KOVAPMI_NOTE* note = nullptr;
    KOVAPMI_DISPLAY_PROPERTIES* display = nullptr;
  };

  tol_type get_tolerance_type() const { return fields_.type; }
  int get_all_around() const { return fields_.all_around; }
  int get_geom_tol_row_count() const { return static_cast<int>(fields_.rows.size()); }
  // 1 for an index of the list, counted from 0; else 0, `row` untouched.
  int get_geom_tol_row_at(int index, KOVAPMI_GEOM_TOL_ROW*& row) const;
  KOVAPMI_NOTE* GetPMINote() const { return fields_.note; }
  KOVAPMI_DISPLAY_PROPERTIES* get_display_properties() const { return fields_.display; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(ATTRIB_KOVAPMI_GEOM_TOL);

// --- Captures ------------------------------------------------------------------------------------

// A camera: where it stands, where it looks, which way is up. Model coordinates; the view angle in
// degrees, the zoom as one over half the height of what is seen.
class KOVAPMI_CAMERA : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_CAMERA, ENTITY)

 public:
  struct fields {
    pmi_text name;
    camera_type type = camera_unknown;
    QENposition origin;
    QENposition target;
    QENvector direction;
    QENvector direction_normal;
    double view_angle = 0;
    double zoom = 0;
  };

  void GetName(const wchar_t*& name) const { name = pmi_text_pointer(fields_.name); }
  camera_type GetType() const { return fields_.type; }
  void GetViewAngle(double& angle) const { angle = fields_.view_angle; }
  void GetZoom(double& zoom) const { zoom = fields_.zoom; }
  void GetOrigin(QENposition& origin) const { origin = fields_.origin; }
  void GetTargetPosition(QENposition& target) const { target = fields_.target; }
  void GetViewDirection(QENvector& direction) const { direction = fields_.direction; }
  // The up vector.
  void GetViewDirectionNormal(QENvector& normal) const { normal = fields_.direction_normal; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_CAMERA);

class KOVAPMI_CLIPPINGPLANE : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_CLIPPINGPLANE, ENTITY)

 public:
  struct fields {
    QENposition point;
    QENvector normal{0, 0, 1};
  };

  void GetClippingPlaneData(QENposition& point, QENvector& normal) const {
    point = fields_.point;
    normal = fields_.normal;
  }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_CLIPPINGPLANE);

// A saved view.
class KOVAPMI_CAPTURE : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_CAPTURE, ENTITY)

 public:
  struct fields {
    ENTITY_LIST members;
    KOVAPMI_CAMERA* camera = nullptr;
    KOVAPMI_CLIPPINGPLANE* clipping_plane = nullptr;
    pmi_text hidden_text;
  };

  const ENTITY_LIST& GetMembers() const { return fields_.members; }
  KOVAPMI_CAMERA* GetCamera() const { return fields_.camera; }
  KOVAPMI_CLIPPINGPLANE* GetClippingPlane() const { return fields_.clipping_plane; }
  const wchar_t* GetHiddenText() const { return pmi_text_pointer(fields_.hidden_text); }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_CAPTURE);

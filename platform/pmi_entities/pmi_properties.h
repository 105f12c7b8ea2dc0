#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orvo_kernel/geometry.h"
#include "orvo_kernel/lists.h"
#include "pmi_entities/pmi_enums.h"

// Type codes of the PMI entity library.
constexpr int KOVAPMI_DIMENSION_TYPE = 100;
constexpr int KOVAPMI_DATUM_TYPE = 101;
constexpr int KOVAPMI_DATUMTGT_TYPE = 102;
constexpr int KOVAPMI_DRF_TYPE = 103;
constexpr int KOVAPMI_DREF_TYPE = 104;
constexpr int KOVAPMI_MODIFIED_DATUM_TYPE = 105;
constexpr int KOVAPMI_ZONE_MODIFIER_TYPE = 106;
constexpr int KOVAPMI_GEOM_TOL_ROW_TYPE = 107;
constexpr int KOVAPMI_NOTE_TYPE = 108;
constexpr int KOVAPMI_DISPLAY_PROPERTIES_TYPE = 109;
constexpr int KOVAPMI_TEXT_PROPERTIES_TYPE = 110;
constexpr int KOVAPMI_LEADER_GEN_TYPE = 111;
constexpr int KOVAPMI_CAPTURE_TYPE = 112;
constexpr int KOVAPMI_CAMERA_TYPE = 113;
constexpr int KOVAPMI_CLIPPINGPLANE_TYPE = 114;
constexpr int ATTRIB_KOVAPMI_TEXT_TYPE = 120;
constexpr int ATTRIB_KOVAPMI_FLAGNOTE_TYPE = 121;
constexpr int ATTRIB_KOVAPMI_ROUGHNESS_TYPE = 122;
constexpr int ATTRIB_KOVAPMI_DATUM_TYPE = 123;
constexpr int ATTRIB_KOVAPMI_DATUM_TARGET_TYPE = 124;
constexpr int ATTRIB_KOVAPMI_GEOM_TOL_TYPE = 125;

// Every class below keeps what it holds in a `fields` of its own and answers from it. Pointers in
// there belong to the model; a text that is not there is answered by a null pointer.
using pmi_text = std::optional<std::wstring>;
inline const wchar_t* pmi_text_pointer(const pmi_text& text) {
  return text.has_value() ? text->c_str() : nullptr;
}

// Gives a class its `fields`, reachable for whoever fills models in.
#define PMI_ENTITY_FIELDS      \
 private:                      \
  friend struct entity_fields; \
  fields fields_;

// Character format of a text (heights in model length units).
class KOVAPMI_TEXT_PROPERTIES : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_TEXT_PROPERTIES, ENTITY)

 public:
  struct fields {
    int fixed_pitch = 0;
    int bold = 0;
    int italic = 0;
    int underline = 0;
    int strike_through = 0;
    int overline = 0;
    double height = 0;
    double ratio = 1;
    double slant = 0;
    double color[3] = {0, 0, 0};
  };

  int is_fixed_pitch() const { return fields_.fixed_pitch; }
  int is_bold() const { return fields_.bold; }
  int is_italic() const { return fields_.italic; }
  int is_underline() const { return fields_.underline; }
  int is_strike_through() const { return fields_.strike_through; }
  int is_overline() const { return fields_.overline; }
  double get_height() const { return fields_.height; }
  // Width over height.
  double get_ratio() const { return fields_.ratio; }
  // Degrees from the vertical.
  double get_slant() const { return fields_.slant; }
  // Red, green, blue from 0 to 1.
  const double* get_color() const { return fields_.color; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_TEXT_PROPERTIES);

// A leader: from the annotation (tail) to what it points at (head), model coordinates.
class KOVAPMI_LEADER_GEN : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_LEADER_GEN, ENTITY)

 public:
  struct fields {
    QENposition head;
    QENposition tail;
  };

  QENposition get_head_pt() const { return fields_.head; }
  QENposition get_tail_pt() const { return fields_.tail; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_LEADER_GEN);

// Where and how an annotation is drawn.
class KOVAPMI_DISPLAY_PROPERTIES : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_DISPLAY_PROPERTIES, ENTITY)

 public:
  struct fields {
    QENposition point;
    QENvector primary_direction{1, 0, 0};
    QENvector normal{0, 0, 1};
    KOVAPMI_TEXT_PROPERTIES* text_properties = nullptr;
    VOID_LIST leaders;  // of KOVAPMI_LEADER_GEN*
  };

  QENposition get_disp_pt() const { return fields_.point; }
  // The direction in which the text runs; any length.
  QENvector get_primary_direction() const { return fields_.primary_direction; }
  // The normal of the plane it is drawn in; any length.
  QENvector get_disp_plane_normal() const { return fields_.normal; }
  KOVAPMI_TEXT_PROPERTIES* get_text_properties() const { return fields_.text_properties; }
  VOID_LIST get_leaders() const { return fields_.leaders; }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_DISPLAY_PROPERTIES);

// The texts around a dimension or a feature control frame.
class KOVAPMI_NOTE : public ENTITY {
  ORVO_ENTITY_IDENTITY(KOVAPMI_NOTE, ENTITY)

 public:
  struct fields {
    pmi_text prefix, suffix, before, after, upper, lower, below;
  };

  const wchar_t* GetPrefixNote() const { return pmi_text_pointer(fields_.prefix); }
  const wchar_t* GetSuffixNote() const { return pmi_text_pointer(fields_.suffix); }
  const wchar_t* GetBeforeNote() const { return pmi_text_pointer(fields_.before); }
  const wchar_t* GetAfterNote() const { return pmi_text_pointer(fields_.after); }
  const wchar_t* GetUpperNote() const { return pmi_text_pointer(fields_.upper); }
  const wchar_t* GetLowerNote() const { return pmi_text_pointer(fields_.lower); }
  const wchar_t* GetBelowNote() const { return pmi_text_pointer(fields_.below); }

  PMI_ENTITY_FIELDS
};
ORVO_ENTITY_TEST(KOVAPMI_NOTE);

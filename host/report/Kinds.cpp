#include "report/Kinds.h"

namespace text {

const std::vector<Kind>& Kinds() {
  static const std::vector<Kind> kinds{
      {"datum", "datum", "datums", "Datums"},
      {"datumTarget", "datum target", "datum targets", "Datum targets"},
      {"geometricTolerance", "tolerance", "tolerances", "Tolerances"},
      {"dimension", "dimension", "dimensions", "Dimensions"},
      {"roughness", "texture", "textures", "Surface textures"},
      {"text", "note", "notes", "Notes"},
      {"flagNote", "flag note", "flag notes", "Flag notes"},
      {"unknown", "unknown annotation", "unknown annotations", "Unknown annotations"},
  };
  return kinds;
}

const Kind& KindCalled(const std::string& name) {
  for (const Kind& kind : Kinds()) {
    if (kind.name == name) return kind;
  }
  return Kinds().back();
}

}  // namespace text

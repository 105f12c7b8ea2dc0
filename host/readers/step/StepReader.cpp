#include "readers/step/StepReader.h"

#include <algorithm>

#include "readers/step/Characters.h"
#include "readers/step/Geometry.h"
#include "readers/step/Reading.h"

namespace {

// A byte-order mark is no part of the encoding, and some write one.
std::string_view WithoutMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.substr(0, kMark.size()) == kMark) text.remove_prefix(kMark.size());
  return text;
}

}  // namespace

bool IsStep(std::string_view bytes) {
  const std::string_view text = WithoutMark(bytes);
  constexpr std::string_view kStart = "ISO-10303-21";
  std::size_t at = 0;
  while (at < text.size()) {
    if (step::IsBlank(text[at])) {
      ++at;
    } else if (text.compare(at, 2, "/*") == 0) {
      at = std::min(text.find("*/", at + 2), text.size() - 2) + 2;
    } else {
      break;
    }
  }
  return text.compare(at, kStart.size(), kStart) == 0;
}

Model ReadStepText(std::string_view text, const std::string& name, Drawing* drawing) {
  step::Reading reading(WithoutMark(text), name);
  step::Assembly assembly(reading);
  step::GeometryReader geometry(reading);
  const step::Occurrence* left = nullptr;  // the first that there is no place for
  for (const step::Occurrence& occurrence : assembly.Occurrences()) {
    if (!occurrence.path.empty() && reading.IsFull()) {
      left = &occurrence;
      break;
    }
    reading.Begin(assembly, occurrence);
    // Most of a step's instances are of no use to the next.
    step::ReadTopology(reading);
    reading.file.Forget();
    // Most parts of an assembly have no PMI of their own, and each look for it goes through all.
    if (occurrence.path.empty() || assembly.HasAspects(occurrence.product)) {
      for (const auto read :
           {step::ReadDatums, step::ReadTolerances, step::ReadDimensions, step::ReadPresentation}) {
        read(reading);
        reading.file.Forget();
      }
    }
    if (drawing != nullptr) {
      geometry.Read(occurrence);
      reading.file.Forget();
    }
  }
  // They stand in the assembly's space and show annotations of all its parts.
  reading.Begin(assembly, assembly.Occurrences().front());
  if (left != nullptr) {
    reading.Skip(Severity::kLost, left->product,
                 "its assembly has too many parts to hold them all");
  }
  step::ReadSavedViews(reading);
  if (drawing != nullptr) geometry.Draw(*drawing);
  for (const char* unread : {"SURFACE_TEXTURE_REPRESENTATION", "DEFAULT_TOLERANCE_TABLE"}) {
    for (const step::Id id : reading.file.Of(unread)) {
      reading.Skip(Severity::kLost, id, "it is PMI that is not read");
    }
  }
  reading.SkipDangling();
  return reading.Finish();
}

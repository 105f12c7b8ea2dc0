#include "readers/step/StepReader.h"

#include "readers/step/Reading.h"

Model ReadStepText(std::string_view text, const std::string& name) {
  step::Reading reading(text, name);
  step::Assembly assembly(reading);
  for (const step::Occurrence& occurrence : assembly.Occurrences()) {
    reading.Begin(assembly, occurrence);
    step::ReadTopology(reading);
    step::ReadDatums(reading);
    step::ReadTolerances(reading);
    step::ReadDimensions(reading);
    step::ReadPresentation(reading);
  }
  // They stand in the assembly's space and show annotations of all its parts.
  reading.Begin(assembly, assembly.Occurrences().front());
  step::ReadSavedViews(reading);
  return std::move(reading.model);
}

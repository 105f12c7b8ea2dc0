#include "readers/step/StepReader.h"

#include "readers/step/Reading.h"

Model ReadStepText(std::string_view text, const std::string& name) {
  step::Reading reading(text, name);
  step::ReadTopology(reading);
  step::ReadDatums(reading);
  step::ReadTolerances(reading);
  step::ReadDimensions(reading);
  step::ReadPresentation(reading);
  step::ReadSavedViews(reading);
  return std::move(reading.model);
}

#include "readers/qif/QifReader.h"

#include "model/File.h"
#include "readers/qif/Geometry.h"
#include "readers/qif/Reading.h"

Model ReadQif(const std::string& path, Drawing* drawing) {
  return ReadQifText(ReadFile(path), path, drawing);
}

Model ReadQifText(std::string_view text, const std::string& name, Drawing* drawing) {
  qif::Reading reading(text, name);
  try {
    qif::ListOtherSections(reading);
    qif::ReadTopology(reading);
    qif::ReadDatums(reading);
    qif::ReadCharacteristics(reading);
    qif::ReadNotes(reading);
    qif::ReadDisplays(reading);
    qif::ReadSavedViews(reading);
    if (drawing != nullptr) qif::ReadGeometry(reading, *drawing);
  } catch (const qif::Unreadable& problem) {
    reading.document.Fail(problem.At(), problem.what());
  }
  return reading.Finish();
}

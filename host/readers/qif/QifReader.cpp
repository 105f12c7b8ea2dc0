#include "readers/qif/QifReader.h"

#include "model/File.h"
#include "readers/qif/Reading.h"

Model ReadQif(const std::string& path) { return ReadQifText(ReadFile(path), path); }

Model ReadQifText(std::string_view text, const std::string& name) {
  qif::Reading reading(text, name);
  try {
    qif::ReadTopology(reading);
    qif::ReadDatums(reading);
    qif::ReadCharacteristics(reading);
    qif::ReadNotes(reading);
    qif::ReadDisplays(reading);
    qif::ReadSavedViews(reading);
  } catch (const qif::Unreadable& problem) {
    reading.document.Fail(problem.At(), problem.what());
  }
  return reading.Finish();
}

#include "readers/qif/QifReader.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "readers/qif/Reading.h"

namespace {

std::string ReadFile(const std::string& path) {
  const auto fail = [&path] { throw ModelError(path + ": " + std::strerror(errno)); };
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             std::fclose);
  if (file == nullptr) fail();
  std::string text;
  char block[65536];
  std::size_t size = 0;
  while ((size = std::fread(block, 1, sizeof block, file.get())) > 0) text.append(block, size);
  if (std::ferror(file.get()) != 0) fail();
  return text;
}

}  // namespace

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

#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "MakeReport.h"
#include "plugin/PluginLibrary.h"
#include "readers/qif/QifReader.h"
#include "writers/json/PrintJson.h"

// Documents that tests write, and reports on them.

inline std::string Read(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

// The first `from` become `to`.
inline std::string With(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

inline ModelReport ReportOn(const Model& model) {
  static const PluginLibrary plugin(PLUGIN);
  const auto exporter = plugin.CreateExporter(model.part->GetDocument());
  return MakeReport(model, *exporter, "part.qif");
}

#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "framework_pmi/KOVAPMIExporter.h"

// Why a plug-in could not be used; one line.
class PluginError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A plug-in opened by its path, as the framework opens it.
class PluginLibrary {
 public:
  // Throws PluginError when the library can't be loaded or lacks the factory.
  explicit PluginLibrary(const std::string& path);
  PluginLibrary(const PluginLibrary&) = delete;
  PluginLibrary& operator=(const PluginLibrary&) = delete;
  ~PluginLibrary();

  // An exporter for a document. Throws PluginError when the factory fails or throws.
  // REQUIRES: the document and this library outlive the exporter.
  std::unique_ptr<KOVAPMIExporter> CreateExporter(KOVADocument& document) const;

 private:
  std::string path_;
  void* handle_;
  int (*factory_)(KOVADocument*, KOVAPMIExporter**) = nullptr;
};

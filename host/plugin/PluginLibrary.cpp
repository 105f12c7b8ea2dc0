#include "plugin/PluginLibrary.h"

#include <dlfcn.h>

#include <cstdio>

#include "KOVAOrvoPMIExporterFactory.h"

PluginLibrary::PluginLibrary(const std::string& path)
    : path_(path), handle_(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (handle_ == nullptr) throw PluginError("cannot load plug-in: " + std::string(dlerror()));
  factory_ = reinterpret_cast<decltype(&KOVACreateOrvoPMIExporter)>(
      dlsym(handle_, "KOVACreateOrvoPMIExporter"));
  if (factory_ == nullptr) {
    dlclose(handle_);
    throw PluginError("plug-in " + path + " has no factory KOVACreateOrvoPMIExporter");
  }
}

PluginLibrary::~PluginLibrary() { dlclose(handle_); }

std::unique_ptr<KOVAPMIExporter> PluginLibrary::CreateExporter(KOVADocument& document) const {
  KOVAPMIExporter* exporter = nullptr;
  int code = 0;
  try {
    code = factory_(&document, &exporter);
  } catch (const std::exception& error) {
    throw PluginError("plug-in " + path_ + " raised: " + error.what());
  }
  std::unique_ptr<KOVAPMIExporter> owner(exporter);
  if (code != 0 || owner == nullptr) {
    char text[32];
    std::snprintf(text, sizeof text, "0x%x", static_cast<unsigned int>(code));
    throw PluginError("plug-in " + path_ + " made no exporter: result " + text);
  }
  return owner;
}

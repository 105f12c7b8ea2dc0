// A plug-in whose factory makes nothing, with a code (FAILING), an exception (RAISING) or a success
// (EMPTY), or makes an exporter and fails all the same (LEAKING).
#include <stdexcept>

#ifdef LEAKING
#include "KOVAOrvoPMIExporter.h"
#endif

extern "C" __attribute__((visibility("default"))) int KOVACreateOrvoPMIExporter(
    [[maybe_unused]] void* document, void** exporter) {
  *exporter = nullptr;
#if defined(RAISING)
  throw std::runtime_error("raised on purpose");
#elif defined(EMPTY)
  return 0;
#elif defined(LEAKING)
  KOVAPMIExporter* const made = new KOVAOrvoPMIExporter(*static_cast<KOVADocument*>(document));
  *exporter = made;
  return 0x1000001;
#else
  return 0x1000001;
#endif
}

// A plug-in whose factory fails, or raises when the document is not null.
#include <stdexcept>

extern "C" __attribute__((visibility("default"))) int KOVACreateOrvoPMIExporter(void* /*document*/,
                                                                                void** exporter) {
  *exporter = nullptr;
#ifdef RAISE
  throw std::runtime_error("raised on purpose");
#else
  return 0x1000001;
#endif
}

#pragma once

// Marks what the library shows; everything else stays inside. KOVA_ORVO_PMI_EXPORTER_BUILD is
// defined for the library's own sources and for whatever else has them linked in.
#ifndef _WIN32
#define KOVA_ORVO_PMI_EXPORT __attribute__((visibility("default")))
#elif defined(KOVA_ORVO_PMI_EXPORTER_BUILD)
#define KOVA_ORVO_PMI_EXPORT __declspec(dllexport)
#else
#define KOVA_ORVO_PMI_EXPORT __declspec(dllimport)
#endif

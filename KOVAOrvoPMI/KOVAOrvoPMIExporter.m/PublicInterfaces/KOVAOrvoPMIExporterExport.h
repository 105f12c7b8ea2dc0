#pragma once

// KOVA_ORVO_PMI_EXPORT marks what the library shows; everything else stays inside.
// KOVA_ORVO_PMI_INTERNAL marks members of an exported class that stay inside too, where the system
// can tell them apart. KOVA_ORVO_PMI_EXPORTER_BUILD is defined for the library's own sources and
// for whatever else has them linked in.
#ifndef _WIN32
#define KOVA_ORVO_PMI_EXPORT __attribute__((visibility("default")))
#define KOVA_ORVO_PMI_INTERNAL __attribute__((visibility("hidden")))
#else
#ifdef KOVA_ORVO_PMI_EXPORTER_BUILD
#define KOVA_ORVO_PMI_EXPORT __declspec(dllexport)
#else
#define KOVA_ORVO_PMI_EXPORT __declspec(dllimport)
#endif
#define KOVA_ORVO_PMI_INTERNAL
#endif

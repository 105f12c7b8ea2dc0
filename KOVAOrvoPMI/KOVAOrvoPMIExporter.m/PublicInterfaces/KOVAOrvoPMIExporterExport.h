#pragma once

// Marks what the library shows; everything else stays inside.
#define KOVA_ORVO_PMI_EXPORT __attribute__((visibility("default")))

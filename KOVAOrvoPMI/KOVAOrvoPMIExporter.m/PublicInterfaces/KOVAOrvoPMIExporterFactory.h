#pragma once

#include "KOVAOrvoPMIExporterExport.h"

// The library's entry points, for C and C++.

#ifdef __cplusplus
class KOVADocument;
class KOVAPMIExporter;

extern "C" {
#else
typedef struct KOVADocument KOVADocument;
typedef struct KOVAPMIExporter KOVAPMIExporter;
#endif

// Makes an exporter for a kernel-backed document and scans the document's model.
//
// Returns 0 and stores the exporter in `*exporter`; the caller deletes it. Returns 0x1000001 and
// stores null when `document` is null or there is no memory for the object. A document that is not
// available yet gives an exporter too; it answers 0x1000008 until PreProcess finds the document. So
// does a document that is not of the kernel, for good.
// Throws what the scan throws (std::bad_alloc, KOVAAllocException, KOVAAbortException; the kernel's
// orvo_exception when an interrupt meets a kernel error, and inside a frame of the caller's in
// place of the two before it); then no exporter is made and `*exporter` is untouched.
// REQUIRES: `exporter` is not null; `document` and its model outlive the exporter.
// CAVEAT: only C++ code can use and delete the exporter, and catch what is thrown; C hands it on.
KOVA_ORVO_PMI_EXPORT int KOVACreateOrvoPMIExporter(KOVADocument* document,
                                                   KOVAPMIExporter** exporter);

// Returns 1: the mark by which the framework knows the library.
KOVA_ORVO_PMI_EXPORT int MERIDAN_WORKS_RQF5_INTERNAL_KOVAOrvoPMIExporter(void);

#ifdef __cplusplus
}
#endif

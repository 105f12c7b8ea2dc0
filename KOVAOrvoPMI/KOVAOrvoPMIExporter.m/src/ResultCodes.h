#pragma once

#include "framework_base/KOVAResult.h"

// Every code that the library answers with.

// 0: the answer was written.
constexpr KOVAResult Success(0);
// 0x1000001: nothing found, object of the wrong kind, index out of range, or a lookup that failed.
constexpr KOVAResult Failure(0x1000001);
// 0x1000005: the query is not implemented.
constexpr KOVAResult NotImplemented(0x1000005);
// 0x1000008: the exporter has not found its document yet.
constexpr KOVAResult NotInitialised(0x1000008);
// 2: the model has neither annotations nor captures.
constexpr KOVAResult NoAnnotationSet(2);

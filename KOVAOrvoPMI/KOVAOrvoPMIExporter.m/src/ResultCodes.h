#pragma once

#include "framework_base/KOVAResult.h"

// Every code that the library answers with, as the plain integers that the factory returns and as
// the results of queries.

constexpr long kSuccess = 0;
constexpr long kFailure = 0x1000001;

// 0: the answer was written.
const KOVAResult Success(kSuccess);
// 0x1000001: nothing found, object of the wrong kind, index out of range, or a look-up that failed.
const KOVAResult Failure(kFailure);
// 0x1000005: the query is not implemented.
const KOVAResult NotImplemented(0x1000005);
// 0x1000008: the exporter has not found its document yet.
const KOVAResult NotInitialised(0x1000008);
// 2: the model has neither annotations nor captures.
const KOVAResult NoAnnotationSet(2);

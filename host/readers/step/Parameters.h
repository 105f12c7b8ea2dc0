#pragma once

#include "readers/step/Exchange.h"

namespace step {

// Reads the text of an instance, from behind the equals sign up to the semicolon. The text has to
// outlive the instance. Throws Unreadable when it is not an instance.
Instance ReadInstance(Id id, std::string_view text);

}  // namespace step

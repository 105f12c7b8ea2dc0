#pragma once

#include <string>
#include <string_view>

// A wide text of the framework in UTF-8. A character that is not a Unicode scalar value
// becomes U+FFFD.
std::string ToUtf8(std::wstring_view wide);

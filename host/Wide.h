#pragma once

#include <string>
#include <string_view>

// Between the framework's wide texts and UTF-8. What is no Unicode scalar value becomes U+FFFD.
std::string ToUtf8(std::wstring_view wide);
std::wstring FromUtf8(std::string_view narrow);

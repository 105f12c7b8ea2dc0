#pragma once

#include <string>

// The bytes of a file. Throws ModelError, "file: why", when it can't be read.
std::string ReadFile(const std::string& path);

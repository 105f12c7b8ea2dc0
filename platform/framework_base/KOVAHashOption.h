#pragma once

// Storage form of the framework's hash maps, one switch for the whole process.
class KOVAHashOption {
 public:
  // True when maps made from now on use the standard unordered map. DEFAULT: false.
  static bool GetUseStdHash();
};

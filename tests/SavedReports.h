#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

// Keeps a report that a test made: another test holds all of them against their schema.
inline void SaveReport(const std::string& json) {
  static int made = 0;
  const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
  std::filesystem::create_directories(SAVED_REPORTS);
  std::ofstream(std::filesystem::path(SAVED_REPORTS) /
                (std::string(test.test_suite_name()) + "." + test.name() + "." +
                 std::to_string(++made) + ".json"))
      << json;
}

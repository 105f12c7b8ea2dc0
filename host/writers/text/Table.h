#pragma once

#include <string>
#include <vector>

#include "report/Report.h"

namespace text {

// Many models in a table: a header line, and a line for each with its counts.
class Table {
 public:
  Table();
  void Add(const ModelReport& report);
  // A model that there is no report on.
  void AddRefused(const std::string& file);
  std::string Print() const;

 private:
  void AddRow(std::vector<std::string> row);

  std::vector<std::vector<std::string>> rows_;  // clean texts, the header first
  std::vector<std::size_t> widths_;
};

}  // namespace text

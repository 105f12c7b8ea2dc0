#pragma once

#include <string>
#include <vector>

#include "report/Report.h"

namespace text {

// Many models in a table: a header line, and a line for each with its counts.
class Table {
 public:
  // With `checked`, each model's findings are counted, too.
  explicit Table(bool checked = false);
  // Adds the line of a model. REQUIRES: its report was checked where findings are counted.
  void Add(const ModelReport& report);
  // Adds the line of a model that was refused.
  void AddRefused(const std::string& file);
  std::string Print() const;

 private:
  void AddRow(std::vector<std::string> row);

  bool checked_;
  std::vector<std::vector<std::string>> rows_;  // clean texts, the header first
  std::vector<std::size_t> widths_;
};

}  // namespace text

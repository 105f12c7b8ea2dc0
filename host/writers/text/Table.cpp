#include "writers/text/Table.h"

#include <algorithm>

#include "report/Clean.h"
#include "writers/text/Checks.h"
#include "writers/text/PrintText.h"

namespace text {

namespace {

constexpr const char* kSeverities[] = {"lost", "reduced", "ignored"};

}  // namespace

Table::Table(bool checked) : checked_(checked) {
  std::vector<std::string> header{"file", "format", "unit"};
  for (const std::string& kind : KindNames()) header.push_back(kind);
  for (const char* severity : kSeverities) header.emplace_back(severity);
  if (checked_) header.insert(header.end(), {"errors", "warnings", "notes"});
  widths_.resize(header.size());
  AddRow(std::move(header));
}

void Table::Add(const ModelReport& report) {
  std::vector<std::string> row{report.source.file, report.source.format, report.source.linearUnit};
  for (const std::string& kind : KindNames()) {
    const auto found = report.totals.find(kind);
    row.push_back(std::to_string(found == report.totals.end() ? 0 : found->second));
  }
  for (const char* severity : kSeverities) {
    row.push_back(std::to_string(CountSkipped(report.source, severity)));
  }
  for (const char* severity : {"error", "warning", "note"}) {
    if (checked_) row.push_back(std::to_string(CountFindings(*report.checks, severity)));
  }
  AddRow(std::move(row));
}

void Table::AddRefused(const std::string& file) { AddRow({file, "refused"}); }

void Table::AddRow(std::vector<std::string> row) {
  row.resize(widths_.size(), "-");
  for (std::size_t i = 0; i < row.size(); ++i) {
    row[i] = OneLine(row[i]);
    if (row[i].empty()) row[i] = "-";
    widths_[i] = std::max(widths_[i], Width(row[i]));
  }
  rows_.push_back(std::move(row));
}

std::string Table::Print() const {
  constexpr std::size_t kTexts = 3;  // the columns before the numbers
  std::string table;
  for (const std::vector<std::string>& row : rows_) {
    for (std::size_t i = 0; i < row.size(); ++i) {
      const std::string blanks(widths_[i] - Width(row[i]), ' ');
      table += (i == 0 ? "" : "  ") + (i < kTexts ? row[i] + blanks : blanks + row[i]);
    }
    table += '\n';
  }
  return table;
}

}  // namespace text

#pragma once

#include <functional>
#include <string>

#include "report/Report.h"

namespace json {

// A report for programs: JSON in UTF-8, as docs/report.schema.json describes it, without a newline
// at its end. What the plug-in did not answer is null. `program` is the program's name and version;
// with an `indent` of 0 or more every value has its own line, with a negative one all is one line.
std::string PrintJson(const ModelReport& report, const std::string& program, int indent);

// The same, handed on in pieces of whole characters, so that the whole is never held.
void PrintJson(const ModelReport& report, const std::string& program, int indent,
               const std::function<void(const std::string&)>& sink);

// The same for a model that could not be reported on: the model's file and the reason.
std::string PrintJsonError(const std::string& file, const std::string& error,
                           const std::string& program, int indent);

}  // namespace json

#include "writers/html/PrintPage.h"

#include "writers/html/Data.h"
#include "writers/html/Glyphs.h"
#include "writers/html/PageFiles.h"
#include "writers/html/Pictures.h"
#include "writers/html/Sections.h"

namespace html {

namespace {

// The licence of the library that is the first of the page's scripts.
constexpr std::string_view kLicence = R"(<!--
The largest script of this page is three.js. Copyright © 2010-2017 three.js authors

Permission is hereby granted, free of charge, to any person obtaining a copy of this software and
associated documentation files (the "Software"), to deal in the Software without restriction,
including without limitation the rights to use, copy, modify, merge, publish, distribute, sublicense,
and/or sell copies of the Software, and to permit persons to whom the Software is furnished to do so,
subject to the following conditions:

The above copyright notice and this permission notice shall be included in all copies or substantial
portions of the Software.

THE SOFTWARE IS PROVIDED "AS IS", WITHOUT WARRANTY OF ANY KIND, EXPRESS OR IMPLIED, INCLUDING BUT NOT
LIMITED TO THE WARRANTIES OF MERCHANTABILITY, FITNESS FOR A PARTICULAR PURPOSE AND NONINFRINGEMENT. IN
NO EVENT SHALL THE AUTHORS OR COPYRIGHT HOLDERS BE LIABLE FOR ANY CLAIM, DAMAGES OR OTHER LIABILITY,
WHETHER IN AN ACTION OF CONTRACT, TORT OR OTHERWISE, ARISING FROM, OUT OF OR IN CONNECTION WITH THE
SOFTWARE OR THE USE OR OTHER DEALINGS IN THE SOFTWARE.
-->
)";

void PrintPolicy(Html& page) {
  page.Raw("<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'");
  page.Raw("; img-src data: blob:");
  const auto add = [&](const char* directive, const std::vector<PageFile>& files) {
    page.Raw("; ").Raw(directive);
    for (const PageFile& file : files) page.Raw(" 'sha256-").Raw(file.hash).Raw("'");
  };
  add("script-src", PageScripts());
  add("style-src", PageStyles());
  page.Raw("; base-uri 'none'; form-action 'none'\">\n");
}

void PrintFile(Html& page, const char* element, const PageFile& file) {
  page.Raw("<").Raw(element).Raw(">");
  for (const std::string_view piece : file.pieces) page.Raw(piece);
  page.Raw("</").Raw(element).Raw(">\n");
}

}  // namespace

void PrintPage(const ModelReport& report, const Drawing& drawing,
               const std::function<void(const Sink&)>& printReport, const Sink& sink) {
  const Names names(report);
  Html page(sink);
  page.Raw("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n");
  PrintPolicy(page);
  page.Raw("<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n");
  page.Raw("<meta name=\"color-scheme\" content=\"light dark\">\n");
  page.Raw("<title>").Raw(Escape(FileName(report.source))).Raw("</title>\n");
  for (const PageFile& file : PageStyles()) PrintFile(page, "style", file);
  const std::vector<PageFile>& scripts = PageScripts();
  PrintFile(page, "script", scripts.front());
  page.Raw("</head>\n<body>\n");
  PrintGlyphs(page);
  PrintHeader(page, report);
  page.Raw("<main>\n<div id=\"viewer\"></div>\n");
  PrintCaptures(page, report, names);
  PrintAnnotations(page, report, names);
  page.Raw("<section id=\"details\"></section>\n");
  PrintFindings(page, report, names);
  PrintAccount(page, report.source);
  PrintPictures(page, report, drawing, names);
  page.Raw("</main>\n");
  page.Raw("<script type=\"application/json\" id=\"report\">");
  printReport([&page](const std::string& piece) { page.Raw(EscapeJson(piece)); });
  page.Raw("</script>\n<script type=\"application/json\" id=\"drawing\">");
  PrintDrawing(page, drawing);
  page.Raw("</script>\n").Raw(kLicence);
  for (std::size_t i = 1; i < scripts.size(); ++i) PrintFile(page, "script", scripts[i]);
  page.Raw("</body>\n</html>\n");
  page.Finish();
}

}  // namespace html

#include "writers/html/Sections.h"

namespace html {

void PrintCaptures(Html& page, const ModelReport& report, const Names& names) {
  page.Raw("<nav id=\"captures\" aria-label=\"Saved views\">\n<h2>Saved views</h2>\n<ul>\n");
  for (const CaptureReport& capture : report.captures) {
    const std::string& place = names.PlaceOf(&capture);
    page.Raw("<li><a href=\"#picture-" + place + "\"").Attribute("data-capture", names.Of(capture));
    page.Attribute("data-index", place).Raw(">");
    page.Text(capture.name.value_or("").empty() ? "Saved view " + names.Of(capture)
                                                : *capture.name);
    page.Raw("</a></li>\n");
  }
  page.Raw("</ul>\n");
  if (report.captures.empty()) page.Raw("<p>The model has none.</p>\n");
  page.Raw("</nav>\n");
}

}  // namespace html

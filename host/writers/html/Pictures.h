#pragma once

#include "model/Drawing.h"
#include "report/Report.h"
#include "writers/html/Html.h"
#include "writers/html/Names.h"

namespace html {

// A picture (SVG) of each capture, or an isometric one where there is none: the drawing's edges and
// the capture's annotations, or all that are not hidden. What is left out for the page's size is
// said.
void PrintPictures(Html& page, const ModelReport& report, const Drawing& drawing,
                   const Names& names);

}  // namespace html

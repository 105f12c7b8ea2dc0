#pragma once

#include "model/Drawing.h"
#include "writers/html/Html.h"

namespace html {

// JSON in UTF-8 so that it may stand in a script element: it ends none, and holds no control and no
// mark that turns the direction of writing as itself. As JSON it says the same.
std::string EscapeJson(const std::string& json);

// The drawing as JSON: {"edges": [{"id", "points": [x, y, z, x, ...]}], "faces": [{"id", "points",
// "triangles": [i, j, k, ...], "edges": [id, ...]}], "vertices": [{"id", "points": [x, y, z]}]}.
// What the document hides has "hidden": true. Coordinates to a millionth of the drawing's size.
void PrintDrawing(Html& page, const Drawing& drawing);

}  // namespace html

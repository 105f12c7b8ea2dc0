#pragma once

#include <string>
#include <string_view>

#include "readers/qif/Xml.h"

namespace qif {

// A document's text in UTF-8, without byte-order mark, from the bytes of its file: unpacked when
// they are compressed by gzip, and converted from the encoding that the mark or the declaration
// names. The answer is a part of `bytes` or all of `storage`, and lives as long.
//
// Throws Malformed, with the place in the unpacked text where there is one, for bytes that can't be
// converted, for a document that expands to more than a hundred times its size or 1 GB, and for
// files of other kinds (STEP, zip, binary), which it names.
std::string_view ToUtf8(std::string_view bytes, std::string& storage);

}  // namespace qif

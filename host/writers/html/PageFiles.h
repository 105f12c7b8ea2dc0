#pragma once

#include <string_view>
#include <vector>

// The scripts and styles that every page holds; put into the program when it is built.

namespace html {

struct PageFile {
  std::vector<std::string_view> pieces;  // the file's text, one after the other
  std::string_view hash;                 // SHA-256 of it, in base64
};

// What the head holds first, then THREE, then the page's own in the order in which they have to
// run.
const std::vector<PageFile>& PageScripts();
const std::vector<PageFile>& PageStyles();

}  // namespace html

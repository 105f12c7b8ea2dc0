// Parses a document into libxml2's tree and does nothing with it.
#include <libxml/parser.h>

#include <fstream>
#include <sstream>

int main(int argc, char** argv) {
  if (argc != 2) return 1;
  std::ostringstream read;
  read << std::ifstream(argv[1], std::ios::binary).rdbuf();
  const std::string text = read.str();
  xmlDoc* const document =
      xmlReadMemory(text.data(), static_cast<int>(text.size()), argv[1], nullptr, 0);
  const int status = document == nullptr ? 1 : 0;
  xmlFreeDoc(document);
  return status;
}

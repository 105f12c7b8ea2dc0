// Parses a document and does nothing with it.
#include <pugixml.hpp>

int main(int argc, char** argv) {
  pugi::xml_document document;
  return argc == 2 && document.load_file(argv[1]) ? 0 : 1;
}

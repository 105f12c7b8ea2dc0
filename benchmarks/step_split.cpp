// Reads a STEP file's bytes, splits them into its instances, and does nothing with them.
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

struct Piece {
  std::string_view number;
  std::string_view entity;
  std::string_view parameters;
};

// A statement each, up to a semicolon outside strings and comments.
std::vector<Piece> Split(std::string_view text) {
  std::vector<Piece> pieces;
  std::size_t begin = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '\'') {
      at = text.find('\'', at + 1);
    } else if (text[at] == '/' && at + 1 < text.size() && text[at + 1] == '*') {
      at = text.find("*/", at + 2);
    } else if (text[at] == ';') {
      const std::string_view statement = text.substr(begin, at - begin);
      const std::size_t number = statement.find('#');
      const std::size_t equals = statement.find('=', number);
      const std::size_t open = statement.find('(', equals);
      begin = at + 1;
      if (number == std::string_view::npos || open == std::string_view::npos) continue;
      pieces.push_back({statement.substr(number, equals - number),
                        statement.substr(equals + 1, open - equals - 1), statement.substr(open)});
    }
    if (at == std::string_view::npos) break;
  }
  return pieces;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 1;
  std::ostringstream read;
  read << std::ifstream(argv[1], std::ios::binary).rdbuf();
  const std::string text = read.str();
  return Split(text).empty() ? 1 : 0;
}

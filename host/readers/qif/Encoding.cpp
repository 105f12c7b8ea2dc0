#include "readers/qif/Encoding.h"

#include <iconv.h>
#include <strings.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <memory>

namespace qif {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kGzip = "\x1F\x8B"sv;

bool StartsWith(std::string_view text, std::string_view start) {
  return text.substr(0, start.size()) == start;
}

// --- Compression ---------------------------------------------------------------------------------

std::string Unpacked(std::string_view bytes) {
  constexpr std::size_t kMostTimes = 100;
  constexpr std::size_t kMostBytes = std::size_t{1} << 30;
  const std::size_t most = std::min(kMostTimes * bytes.size() + 65536, kMostBytes);
  z_stream stream{};
  if (inflateInit2(&stream, 16 + MAX_WBITS) != Z_OK) throw std::bad_alloc();
  const std::unique_ptr<z_stream, int (*)(z_stream*)> ends(&stream, inflateEnd);
  std::string text;
  char block[65536];
  while (true) {
    if (stream.avail_in == 0) {
      const std::size_t part = std::min(bytes.size(), kMostBytes);
      stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
      stream.avail_in = static_cast<uInt>(part);
      bytes.remove_prefix(part);
    }
    stream.next_out = reinterpret_cast<Bytef*>(block);
    stream.avail_out = sizeof block;
    const int status = inflate(&stream, Z_NO_FLUSH);
    text.append(block, sizeof block - stream.avail_out);
    if (text.size() > most) throw Malformed("its gzip data expands to too much");
    if (status == Z_STREAM_END) {
      // Members may follow each other; zeros fill a block up.
      const std::string_view rest(reinterpret_cast<const char*>(stream.next_in), stream.avail_in);
      if (rest.find_first_not_of('\0') == std::string_view::npos && bytes.empty()) return text;
      inflateReset(&stream);
    } else if (status == Z_BUF_ERROR ||
               (status == Z_OK && stream.avail_in == 0 && stream.avail_out != 0 && bytes.empty())) {
      throw Malformed("its gzip data is truncated", PlaceAt(text, text.size()));
    } else if (status != Z_OK) {
      throw Malformed("its gzip data is damaged" +
                          (stream.msg == nullptr ? "" : " (" + std::string(stream.msg) + ")"),
                      PlaceAt(text, text.size()));
    }
  }
}

// --- Encodings -----------------------------------------------------------------------------------

// The encoding that a declaration names; empty when there is none.
std::string Declared(std::string_view text) {
  if (!StartsWith(text, "<?xml")) return {};
  text = text.substr(0, text.find("?>"));
  const std::size_t name = text.find("encoding");
  const std::size_t open = text.find_first_of("\"'", std::min(name, text.size()));
  if (open == std::string_view::npos) return {};
  return std::string(text.substr(open + 1, text.find(text[open], open + 1) - open - 1));
}

std::string EncodingOf(std::string_view bytes) {
  const struct {
    std::string_view start;
    const char* encoding;
  } kStarts[] = {
      {"\xEF\xBB\xBF"sv, "UTF-8"}, {"\xFF\xFE\0\0"sv, "UTF-32LE"}, {"\0\0\xFE\xFF"sv, "UTF-32BE"},
      {"\xFF\xFE"sv, "UTF-16LE"},  {"\xFE\xFF"sv, "UTF-16BE"},     {"<\0\0\0"sv, "UTF-32LE"},
      {"\0\0\0<"sv, "UTF-32BE"},   {"<\0"sv, "UTF-16LE"},          {"\0<"sv, "UTF-16BE"}};
  for (const auto& known : kStarts) {
    if (StartsWith(bytes, known.start)) return known.encoding;
  }
  const std::string declared = Declared(bytes);
  for (const char* wide : {"UTF-16", "UTF-32", "UCS-2", "UCS-4", "ISO-10646"}) {
    if (strncasecmp(declared.c_str(), wide, std::string_view(wide).size()) == 0) {
      throw Malformed("the encoding is not " + Quote(declared) + ", as the document says", {1, 1});
    }
  }
  return declared.empty() ? "UTF-8" : declared;
}

std::string Converted(std::string_view bytes, const std::string& encoding) {
  // The names that XML allows mean no options to the converter.
  const bool isName = encoding.find_first_not_of(
                          "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvw"
                          "xyz0123456789._-:") == std::string::npos;
  const iconv_t converter = isName ? iconv_open("UTF-8", encoding.c_str()) : iconv_t(-1);
  if (converter == iconv_t(-1)) {
    throw Malformed("the encoding " + Quote(encoding) + " is not known", {1, 1});
  }
  const std::unique_ptr<void, int (*)(iconv_t)> ends(converter, iconv_close);
  std::string text;
  char* from = const_cast<char*>(bytes.data());
  std::size_t left = bytes.size();
  char block[65536];
  while (left > 0) {
    char* to = block;
    std::size_t room = sizeof block;
    const bool isWhole = iconv(converter, &from, &left, &to, &room) != std::size_t(-1);
    const int error = isWhole ? 0 : errno;
    text.append(block, sizeof block - room);
    if (error == EILSEQ || error == EINVAL) {
      throw Malformed(error == EINVAL ? "the document is truncated inside a character"
                                      : "a byte is no character of " + encoding,
                      PlaceAt(text, text.size()));
    }
  }
  return text;
}

// Throws for files of other kinds.
void RequireText(std::string_view bytes) {
  const std::size_t first = bytes.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) {
    throw Malformed("the document is empty", PlaceAt(bytes, bytes.size()));
  }
  if (StartsWith(bytes.substr(first), "ISO-10303-21")) {
    throw Malformed("this is a STEP file in another form; give it plain, not compressed");
  }
  if (StartsWith(bytes, "PK\3\4") || StartsWith(bytes, "PK\5\6")) {
    throw Malformed("this is a zip archive; unpack it and name the document in it");
  }
}

}  // namespace

std::string_view ToUtf8(std::string_view bytes, std::string& storage) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (StartsWith(bytes, kGzip)) {
    storage = Unpacked(bytes);
    bytes = storage;
  }
  RequireText(bytes);
  const std::string encoding = EncodingOf(bytes);
  if (strcasecmp(encoding.c_str(), "UTF-8") != 0) {
    storage = Converted(bytes, encoding);
    bytes = storage;
  }
  if (StartsWith(bytes, kMark)) bytes.remove_prefix(kMark.size());
  RequireText(bytes);
  // What does not start as a document, but with control characters, is no text at all.
  const bool isMarkup = bytes[bytes.find_first_not_of(" \t\r\n")] == '<';
  const std::string_view start = bytes.substr(0, isMarkup ? 0 : 4096);
  if (std::any_of(start.begin(), start.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\r' && c != '\n';
      })) {
    throw Malformed("this is a binary file, not a QIF document");
  }
  return bytes;
}

}  // namespace qif

#include "model/File.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "model/Model.h"

std::string ReadFile(const std::string& path) {
  const auto fail = [&path] { throw ModelError(path + ": " + std::strerror(errno)); };
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                             std::fclose);
  if (file == nullptr) fail();
  std::string text;
  char block[65536];
  std::size_t size = 0;
  while ((size = std::fread(block, 1, sizeof block, file.get())) > 0) text.append(block, size);
  if (std::ferror(file.get()) != 0) fail();
  return text;
}

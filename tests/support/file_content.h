// A whole file as bytes; empty for a file that is not there.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

inline std::string contentOf(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

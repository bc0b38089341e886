#include "interchange/draw/file_output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#include <unistd.h>

namespace interchange {

namespace {

struct Closer {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

bool fail(Quorl::Failure& error, const std::string& path, const char* what, const char* expected) {
  return error.set(path, 0, std::string(what) + " (" + std::strerror(errno) + ")", expected);
}

} // namespace

bool writeWhole(const std::string& path, std::string_view bytes, Quorl::Failure& error) {
  // The process number keeps two programs that write the same file from sharing the one beside it.
  const std::string beside = path + ".part" + std::to_string(::getpid());
  constexpr const char* kExpected = "a path in a folder that can be written to";
  File file(std::fopen(beside.c_str(), "wb"));
  if (!file) return fail(error, path, "the file cannot be created", kExpected);
  bool written = std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size();
  written = std::fflush(file.get()) == 0 && written;
  written = ::fsync(::fileno(file.get())) == 0 && written;
  written = std::fclose(file.release()) == 0 && written;
  if (!written) {
    fail(error, path, "the file cannot be written", "enough room on the disk");
    std::remove(beside.c_str());
    return false;
  }
  if (std::rename(beside.c_str(), path.c_str()) == 0) return true;
  fail(error, path, "the file cannot be replaced", kExpected);
  std::remove(beside.c_str());
  return false;
}

bool readWhole(const std::string& path, std::string& bytes, Quorl::Failure& error) {
  bytes.clear();
  std::error_code status;
  if (std::filesystem::is_directory(path, status)) {
    return error.set(path, 0, "the path names a folder", "a readable file");
  }
  const File file(std::fopen(path.c_str(), "rb"));
  if (!file) return fail(error, path, "the file cannot be read", "a readable file");
  char buffer[1 << 16];
  while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
    bytes.append(buffer, count);
  return std::ferror(file.get()) == 0 || fail(error, path, "the file cannot be read", "a readable file");
}

} // namespace interchange

#include "app/console.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace app {

namespace {

bool write(std::FILE* stream, const std::string& text) {
  return std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
}

} // namespace

void Console::data(const std::string& text) {
  if (write(stdout, text) || !dataThrough_) return;
  dataThrough_ = false;
  fault(Failure{"standard output", 0, std::string("can't be written to: ") + std::strerror(errno), ""});
}

void Console::note(const std::string& line) const {
  if (!quiet_) write(dataOnly_ ? stderr : stdout, line + "\n");
}

void Console::fault(const Failure& failure) const { fault(failure.text()); }

void Console::fault(const std::string& line) const { write(stderr, line + "\n"); }

} // namespace app

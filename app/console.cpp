#include "app/console.h"

#include <cstdio>

namespace app {

namespace {

void write(std::FILE* stream, const std::string& text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

} // namespace

void Console::data(const std::string& text) const { write(stdout, text); }

void Console::note(const std::string& line) const {
  if (!quiet_) write(dataOnly_ ? stderr : stdout, line + "\n");
}

void Console::fault(const Failure& failure) const { fault(failure.text()); }

void Console::fault(const std::string& line) const { write(stderr, line + "\n"); }

} // namespace app

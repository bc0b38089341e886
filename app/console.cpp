#include "app/console.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "quorl/base/string.h"

namespace app {

namespace {

bool write(std::FILE* stream, const std::string& text) {
  return std::fwrite(text.data(), 1, text.size(), stream) == text.size() && std::fflush(stream) == 0;
}

// What stands in a file may be no text at all, and without end: enough of it is shown to find it by.
std::string printable(const std::string& text) {
  constexpr size_t kMost = 2000;
  std::string plain = ZnString::fromUtf8(text.substr(0, kMost)).utf8();
  for (char& c : plain)
    if ((static_cast<unsigned char>(c) < ' ' && c != '\n') || c == '\x7f') c = '?';
  return text.size() > kMost ? plain + " ..." : plain;
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

void Console::fault(const std::string& line) const { write(stderr, printable(line) + "\n"); }

void Console::finding(const std::string& line) { data(printable(line) + "\n"); }

} // namespace app

#include "quorl/rx/print.h"

#include <cstdarg>
#include <cstdio>
#include <utility>

namespace {

void printToStandardOutput(const ZnString& text) {
  const std::string bytes = text.utf8();
  std::fwrite(bytes.data(), 1, bytes.size(), stdout);
  std::fflush(stdout);
}

ZnPrintSink& sinkSlot() {
  static ZnPrintSink* sink = new ZnPrintSink(printToStandardOutput);
  return *sink;
}

} // namespace

void znutPrintf(const wchar_t* pattern, ...) {
  va_list arguments;
  va_start(arguments, pattern);
  ZnString text;
  text.formatV(pattern, arguments);
  va_end(arguments);
  // A copy, since the sink may replace itself.
  const ZnPrintSink sink = sinkSlot();
  sink(text);
}

ZnPrintSink znutSetPrintSink(ZnPrintSink sink) {
  return std::exchange(sinkSlot(), sink ? std::move(sink) : ZnPrintSink(printToStandardOutput));
}

#include "quorl/rx/res_buf.h"

#include <cstdarg>

resbuf::~resbuf() {
  while (next) next = std::move(next->next);
}

resbuf resbuf::ofReal(double value) {
  resbuf buffer;
  buffer.restype = kResReal;
  buffer.real = value;
  return buffer;
}

resbuf resbuf::ofShort(std::int16_t value) {
  resbuf buffer;
  buffer.restype = kResShort;
  buffer.shortInt = value;
  return buffer;
}

resbuf resbuf::ofLong(std::int32_t value) {
  resbuf buffer;
  buffer.restype = kResLong;
  buffer.longInt = value;
  return buffer;
}

resbuf resbuf::ofString(const ZnString& value) {
  resbuf buffer;
  buffer.restype = kResString;
  buffer.text = value;
  return buffer;
}

resbuf* znutBuildList(int type, ...) {
  va_list arguments;
  va_start(arguments, type);
  ZnResBufList first;
  ZnResBufList* end = &first;
  for (bool more = true; more; type = more ? va_arg(arguments, int) : kResNone) {
    resbuf buffer;
    switch (type) {
    case kResNone:
      more = false;
      break;
    case kResReal:
      buffer = resbuf::ofReal(va_arg(arguments, double));
      break;
    case kResShort:
      buffer = resbuf::ofShort(static_cast<std::int16_t>(va_arg(arguments, int)));
      break;
    case kResLong:
      buffer = resbuf::ofLong(va_arg(arguments, int));
      break;
    case kResString:
      buffer = resbuf::ofString(va_arg(arguments, const wchar_t*));
      break;
    default:
      va_end(arguments);
      return nullptr;
    }
    *end = std::make_unique<resbuf>(std::move(buffer));
    end = &(*end)->next;
  }
  va_end(arguments);
  return first.release();
}

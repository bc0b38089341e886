#include "quorl/base/resource.h"

extern "C" const ZnRxResourceText* znrxResourceTable() {
  static const ZnRxResourceText texts[] = {
      {7, L"seven"}, {2040, L"Ø %s"}, {9, L""}, {0, nullptr}, {11, L"beyond the end"}};
  return texts;
}

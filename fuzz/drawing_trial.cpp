#include "fuzz/drawing_trial.h"

#include <cstdlib>

#include "quorl/file/byte_stream.h"
#include "quorl/file/drawing_audit.h"
#include "quorl/file/drawing_file.h"
#include "quorl/file/recovery.h"

namespace {

bool isWritable(const ZnDbDatabase& database, ZnDrawingFormat format, std::string& bytes) {
  ZnFileError error;
  return zndbDrawingToBytes(database, format, bytes, error) == Quorl::eOk;
}

} // namespace

void tryDrawing(std::string_view bytes) {
  ZnFileError error;
  std::string again;
  if (const auto opened = zndbDrawingFromBytes(bytes, error)) {
    zndbAuditDrawing(*opened, false);
    isWritable(*opened, ZnDrawingFormat::kText, again);
    isWritable(*opened, ZnDrawingFormat::kBinary, again);
  }
  const ZnRecovery recovery = zndbRecoverDrawing(ZnStringSource(bytes));
  if (!recovery.database) return;
  const bool sound = zndbAuditDrawing(*recovery.database, false).empty() &&
                     isWritable(*recovery.database, ZnDrawingFormat::kBinary, again) &&
                     zndbDrawingFromBytes(again, error) != nullptr;
  if (!sound) std::abort();
}

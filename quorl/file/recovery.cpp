#include "quorl/file/recovery.h"

#include "quorl/db/core/undo.h"
#include "quorl/file/bdoc_reader.h"
#include "quorl/file/disk_file.h"
#include "quorl/file/drawing_audit.h"
#include "quorl/file/salvage.h"
#include "quorl/file/tdoc_reader.h"

namespace {

// A text has no zeros; a binary drawing begins with forty bytes of numbers.
bool isBinary(std::string_view start) {
  return start.starts_with(Quorl::kBdocMagic) || start.find('\0') != std::string_view::npos;
}

template<class Read>
std::unique_ptr<ZnDbDatabase> readOften(ZnSalvage& salvage, ZnFileError& error, const Read& read) {
  std::unique_ptr<ZnDbDatabase> database;
  do {
    salvage.beginReading();
    error = {};
    database = read();
  } while (!database && salvage.hasLostMore());
  return database;
}

// A binary file is read in pieces, a text as a whole.
std::unique_ptr<ZnDbDatabase> readFrom(const ZnByteSource& source, ZnSalvage& salvage, ZnFileError& error) {
  constexpr std::uint64_t kLookAt = 64;
  std::string bytes;
  if (!source.read(0, std::min(source.size(), kLookAt), bytes)) {
    error.fail(Quorl::eFileAccess, Quorl::bytePlace(0), "can't be read", "a readable file");
    return nullptr;
  }
  if (isBinary(bytes))
    return readOften(salvage, error, [&] { return ZnBdocReader(source, &salvage).read(error); });
  if (!source.read(0, source.size(), bytes)) {
    error.fail(Quorl::eFileAccess, Quorl::bytePlace(0), "can't be read", "a readable file");
    return nullptr;
  }
  return readOften(salvage, error, [&] { return ZnTdocReader(bytes, &salvage).read(error); });
}

} // namespace

ZnRecovery zndbRecoverDrawing(const ZnByteSource& source) {
  ZnRecovery recovery;
  ZnSalvage salvage;
  recovery.database = readFrom(source, salvage, recovery.error);
  recovery.findings = salvage.told();
  if (!recovery.database) return recovery;
  for (const ZnAuditFinding& finding : zndbAuditDrawing(*recovery.database, true)) {
    ZnFileError error;
    error.object = finding.object;
    error.fail(Quorl::eFileDamaged, Quorl::objectPlace(finding.object, finding.className), finding.reason);
    recovery.findings.push_back(error);
  }
  recovery.database->undoRecorder().clear();
  return recovery;
}

ZnRecovery zndbRecoverDrawing(const std::string& path) {
  ZnRecovery recovery;
  const ZnDiskSource source(path);
  if (source.fault().empty())
    recovery = zndbRecoverDrawing(source);
  else
    recovery.error.fail(Quorl::eFileAccess, {}, "can't be opened: " + source.fault(), "a readable file");
  recovery.error.file = path;
  for (ZnFileError& finding : recovery.findings) finding.file = path;
  return recovery;
}

#include "quorl/file/bdoc_writer.h"

#include "quorl/assoc/left_overs.h"
#include "quorl/file/bdoc_records.h"
#include "quorl/file/byte_codec.h"
#include "quorl/file/drawing_header.h"
#include "quorl/file/drawing_sources.h"
#include "quorl/file/proxy_conversion.h"
#include "quorl/file/record_filer.h"

namespace {

constexpr const char* kRoom = "a place with room for it";

} // namespace

bool ZnBdocWriter::write(const ZnDbDatabase& database, ZnFileError& error) {
  const ZnDbLeftOvers leftOvers(database);
  const std::vector<ZnDbObjectId> ids = Quorl::storedObjects(database);
  ZnDrawingHeader header;
  if (!ZnDrawingHeader::of(database, ids.size(), header, error)) return false;
  if (!container_.begin()) return error.fail(Quorl::eFileAccess, "byte 0", "can't be written", kRoom);
  for (const ZnDbObjectId id : ids) {
    if (!writeObject(id, error)) return false;
    if (!flush(ZnSectionType::kObjects, objects_, Quorl::kSectionBytes, error)) return false;
    if (!flush(ZnSectionType::kHandles, handles_, Quorl::kSectionBytes, error)) return false;
    if (!flush(ZnSectionType::kNames, names_, Quorl::kSectionBytes, error)) return false;
  }
  constexpr size_t kAll = 1;
  const bool written = flush(ZnSectionType::kObjects, objects_, kAll, error) &&
                       flush(ZnSectionType::kHandles, handles_, kAll, error) &&
                       flush(ZnSectionType::kNames, names_, kAll, error) && writeClasses(error) &&
                       writeHeader(header, error);
  return written &&
         (container_.finish() || error.fail(Quorl::eFileAccess, "section table", "can't be written", kRoom));
}

bool ZnBdocWriter::flush(ZnSectionType type, std::string& section, size_t least, ZnFileError& error) {
  if (section.size() < least) return true;
  if (section.size() > Quorl::kLargestSection)
    return error.fail(Quorl::eOutOfRange, Quorl::sectionPlace(type, 1),
                      "the fields of one object are too long",
                      std::to_string(Quorl::kLargestSection) + " bytes at most");
  if (!container_.add(type, section))
    return error.fail(Quorl::eFileAccess, Quorl::sectionPlace(type, 1), "can't be written", kRoom);
  section.clear();
  return true;
}

bool ZnBdocWriter::writeObject(ZnDbObjectId id, ZnFileError& error) {
  ZnDbObject* object = nullptr;
  Quorl::ErrorStatus status = accessZnDbObjectForRead(object, id, nullptr);
  std::string_view text;
  record_.clear();
  if (status == Quorl::eOk) {
    ZnDbRecordFiler filer(record_);
    status = zndbWriteRecord(*object, record_, filer, text);
    endZnDbObjectRead(object);
  }
  if (status != Quorl::eOk)
    return error.fail(status, Quorl::objectPlace(id.handle(), id.objectClass()->name().utf8()),
                      std::string("can't be written: ") + Quorl::errorStatusText(status),
                      "an object that writes its fields");
  const std::uint64_t handle = id.handle().value;
  ZnByteWriter handles(handles_);
  handles.putCount(handle - lastHandle_);
  handles.putCount(static_cast<std::uint64_t>(classes_.numberOf(*object)));
  lastHandle_ = handle;
  const ZnDbProxyData* proxy = zndbProxyData(object);
  putRecord(handle, text, proxy && proxy->isText);
  return true;
}

void ZnBdocWriter::putRecord(std::uint64_t handle, std::string_view text, bool isText) {
  ZnByteWriter out(objects_);
  out.put<std::uint8_t>(isText ? Quorl::kRecordHasText : 0);
  out.putCount(record_.bytes.size());
  out.putCount(record_.references.size());
  out.putCount(record_.atoms.size());
  if (isText) out.putCount(text.size());
  objects_ += record_.bytes;
  for (const auto& [kind, id] : record_.references) {
    const auto number = static_cast<std::uint8_t>(kind);
    // What is erased is not in the file, so nothing there can refer to it.
    out.put<std::uint8_t>(id.isErased() ? number | Quorl::kNullReference : number);
    if (!id.isErased()) out.putCount(zndbZigzag(static_cast<std::int64_t>(id.handle().value - handle)));
  }
  for (const ZnAtom atom : record_.atoms) out.putCount(numberOfName(atom));
  objects_ += text;
}

std::uint64_t ZnBdocWriter::numberOfName(ZnAtom name) {
  if (name.isNull()) return 0;
  const auto [entry, added] = nameNumbers_.emplace(name, nameNumbers_.size() + 1);
  if (added) ZnByteWriter(names_).putText(Quorl::toUtf8(name.text()));
  return entry->second;
}

bool ZnBdocWriter::writeClasses(ZnFileError& error) {
  std::string section;
  ZnByteWriter out(section);
  out.putCount(classes_.size());
  for (int i = 0; i < static_cast<int>(classes_.size()); ++i) {
    const ZnDbClassRecord& record = classes_.record(i);
    for (const ZnString* text : {&record.name, &record.tdocName, &record.appName, &record.parentName})
      out.putText(text->utf8());
    for (const int number : {record.version, record.maintenanceVersion, record.proxyFlags})
      out.put(static_cast<std::int32_t>(number));
  }
  return flush(ZnSectionType::kClasses, section, 1, error);
}

namespace {

void putValue(ZnByteWriter& out, const ZnRxVariableValue& value) {
  out.put(static_cast<std::uint8_t>(value.type()));
  if (value.type() == ZnRxVariableType::kString)
    out.putText(value.string().utf8());
  else
    out.put(value.number().value_or(0.0)); // a double holds the numbers of every kind exactly
}

} // namespace

bool ZnBdocWriter::writeHeader(const ZnDrawingHeader& header, ZnFileError& error) {
  std::string section;
  ZnByteWriter out(section);
  for (const std::uint64_t handle : header.handles) out.put(handle);
  out.put(header.nextHandle);
  out.put(header.objectCount);
  for (const int number : {header.version, header.maintenanceVersion, header.insertionUnits})
    out.put(static_cast<std::int32_t>(number));
  for (const double element : header.ucs) out.put(element);
  out.putCount(header.variables.size());
  for (const auto& [name, value] : header.variables) {
    out.putText(name.utf8());
    putValue(out, value);
  }
  return flush(ZnSectionType::kHeader, section, 1, error);
}

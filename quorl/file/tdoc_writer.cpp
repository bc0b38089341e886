#include "quorl/file/tdoc_writer.h"

#include <xxhash.h>

#include "quorl/assoc/left_overs.h"
#include "quorl/file/drawing_header.h"
#include "quorl/file/drawing_sources.h"
#include "quorl/file/proxy_conversion.h"
#include "quorl/file/tdoc_items.h"
#include "quorl/file/tdoc_layout.h"
#include "quorl/file/text_out_filer.h"

struct ZnTdocWriter::Hash {
  std::unique_ptr<XXH64_state_t, XXH_errorcode (*)(XXH64_state_t*)> state{XXH64_createState(),
                                                                          XXH64_freeState};
};

ZnTdocWriter::ZnTdocWriter(ZnByteSink& sink)
    : sink_(sink)
    , hash_(std::make_unique<Hash>()) {}

ZnTdocWriter::~ZnTdocWriter() = default;

void ZnTdocWriter::item(int code, std::string_view value) {
  Quorl::appendInteger(text_, code);
  text_ += '\n';
  Quorl::appendEscaped(text_, value);
  text_ += '\n';
}

void ZnTdocWriter::beginSection(const char* name) {
  item(Quorl::kTdocSection, name);
  XXH64_reset(hash_->state.get(), 0);
  hashed_ = text_.size();
}

bool ZnTdocWriter::flush(const std::string& place, ZnFileError& error) {
  XXH64_update(hash_->state.get(), text_.data() + hashed_, text_.size() - hashed_);
  if (!sink_.write(text_))
    return error.fail(Quorl::eFileAccess, place, "can't be written", "a place with room for it");
  text_.clear();
  hashed_ = 0;
  return true;
}

bool ZnTdocWriter::endSection(const char* name, ZnFileError& error) {
  const std::string place = std::string("section ") + name;
  if (!flush(place, error)) return false;
  std::string hash;
  Quorl::appendHex(hash, XXH64_digest(hash_->state.get()));
  item(Quorl::kTdocChecksum, hash);
  return true;
}

bool ZnTdocWriter::write(const ZnDbDatabase& database, ZnFileError& error) {
  const ZnDbLeftOvers leftOvers(database);
  const std::vector<ZnDbObjectId> ids = Quorl::storedObjects(database);
  ZnDrawingHeader header;
  if (!ZnDrawingHeader::of(database, ids.size(), header, error)) return false;
  item(Quorl::kTdocSection, Quorl::kTdocMark + std::to_string(Quorl::kTdocVersion));
  if (!writeHeader(header, error) || !writeClasses(ids, error)) return false;
  beginSection("OBJECTS");
  constexpr size_t kPiece = size_t{1} << 20;
  for (const ZnDbObjectId id : ids) {
    if (!writeObject(id, error)) return false;
    if (text_.size() > kPiece && !flush("section OBJECTS", error)) return false;
  }
  if (!endSection("OBJECTS", error)) return false;
  item(Quorl::kTdocSection, "END");
  return flush("section END", error);
}

bool ZnTdocWriter::writeHeader(const ZnDrawingHeader& header, ZnFileError& error) {
  beginSection("HEADER");
  ZnDbTextOutFiler filer(text_);
  const auto handle = [&](const char* name, std::uint64_t value) {
    item(Quorl::kHeaderName, name);
    std::string digits;
    Quorl::appendHex(digits, value);
    item(Quorl::kTdocHandle, digits);
  };
  for (size_t i = 0; i < ZnDrawingHeader::kIds; ++i) handle(ZnDrawingHeader::idName(i), header.handles[i]);
  handle("next-handle", header.nextHandle);
  item(Quorl::kHeaderName, "objects");
  filer.writeInteger(Quorl::kHeaderCount, static_cast<std::int64_t>(header.objectCount));
  const std::pair<const char*, int> numbers[] = {{"version", header.version},
                                                 {"maintenance-version", header.maintenanceVersion},
                                                 {"insertion-units", header.insertionUnits}};
  for (const auto& [name, value] : numbers) {
    item(Quorl::kHeaderName, name);
    filer.writeInteger(Quorl::kHeaderInteger, value);
  }
  item(Quorl::kHeaderName, "ucs");
  for (const double element : header.ucs) filer.writeDouble(Quorl::kHeaderReal, element);
  for (const auto& [name, value] : header.variables) {
    filer.writeString(Quorl::kVariableName, name);
    const int code = Quorl::kVariableCodes[static_cast<int>(value.type())];
    const double number = value.number().value_or(0.0);
    switch (value.type()) {
    case ZnRxVariableType::kBool:
      filer.writeBool(code, number != 0.0);
      break;
    case ZnRxVariableType::kInt16:
    case ZnRxVariableType::kInt32:
      filer.writeInteger(code, static_cast<std::int64_t>(number));
      break;
    case ZnRxVariableType::kDouble:
      filer.writeDouble(code, number);
      break;
    case ZnRxVariableType::kString:
      filer.writeString(code, value.string());
      break;
    }
  }
  if (filer.status() != Quorl::eOk)
    return error.fail(filer.status(), "section HEADER",
                      std::string("can't be written: ") + Quorl::errorStatusText(filer.status()),
                      "values of their types");
  return endSection("HEADER", error);
}

bool ZnTdocWriter::writeClasses(const std::vector<ZnDbObjectId>& ids, ZnFileError& error) {
  for (const ZnDbObjectId id : ids) classes_.numberOf(*id.slot()->object);
  beginSection("CLASSES");
  for (int i = 0; i < static_cast<int>(classes_.size()); ++i) {
    const ZnDbClassRecord& record = classes_.record(i);
    const ZnString* texts[] = {&record.name, &record.tdocName, &record.appName, &record.parentName};
    const int numbers[] = {record.version, record.maintenanceVersion, record.proxyFlags};
    for (size_t k = 0; k < std::size(texts); ++k) item(Quorl::kClassTexts[k], texts[k]->utf8());
    for (size_t k = 0; k < std::size(numbers); ++k) item(Quorl::kClassNumbers[k], std::to_string(numbers[k]));
  }
  return endSection("CLASSES", error);
}

bool ZnTdocWriter::writeObject(ZnDbObjectId id, ZnFileError& error) {
  ZnDbObject* object = nullptr;
  Quorl::ErrorStatus status = accessZnDbObjectForRead(object, id, nullptr);
  if (status == Quorl::eOk) {
    item(Quorl::kTdocObject, classes_.label(classes_.numberOf(*object)));
    Quorl::appendInteger(text_, Quorl::kTdocHandle);
    text_ += '\n';
    Quorl::appendHex(text_, id.handle().value);
    text_ += '\n';
    ZnDbTextOutFiler filer(text_);
    status = zndbWriteText(*object, filer);
    endZnDbObjectRead(object);
  }
  return status == Quorl::eOk ||
         error.fail(status, Quorl::objectPlace(id.handle(), id.objectClass()->name().utf8()),
                    std::string("can't be written: ") + Quorl::errorStatusText(status),
                    "an object that writes its fields");
}

#include "quorl/file/tdoc_reader.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <xxhash.h>

#include "quorl/file/drawing_sources.h"
#include "quorl/file/proxy_conversion.h"
#include "quorl/file/salvage.h"
#include "quorl/file/tdoc_layout.h"
#include "quorl/file/text_in_filer.h"

using Quorl::ErrorStatus;

ZnTdocReader::ZnTdocReader(std::string_view text, ZnSalvage* salvage)
    : text_(text)
    , lines_(text)
    , salvage_(salvage) {
  if (text.find('\r') == std::string_view::npos) return;
  // Values never hold a carriage return: what stands there came with the line's end on its way here.
  withoutReturns_.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i)
    if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n') withoutReturns_ += text[i];
  text_ = withoutReturns_;
  lines_ = Quorl::TdocLines(text_);
}

std::unique_ptr<ZnDbDatabase> ZnTdocReader::read(ZnFileError& error) {
  if (!(salvage_ ? salvageSections() : readSections(error))) return nullptr;
  database_ = Quorl::drawingToFill();
  if (salvage_) salvageSlots();
  if (!makeSlots(error)) return nullptr;
  for (const Object& object : objects_) {
    if (readObject(object, error)) continue;
    if (!salvage_) return nullptr;
    salvage_->lose(ZnDbHandle(object.handle), error);
    error = {};
  }
  if (!finish(error)) return nullptr;
  return std::move(database_);
}

bool ZnTdocReader::readSections(ZnFileError& error) {
  if (!readMark(error) || !readHeader(error) || !readClasses(error) || !scanObjects(error)) return false;
  if (!expectSection("END", error)) return false;
  if (lines_.atEnd()) return true;
  line_ = lines_.line();
  return failHere(error, "lines after the end", "the end of the file");
}

bool ZnTdocReader::finish(ZnFileError& error) {
  if (salvage_) return Quorl::finishSalvaged(*database_, index_, header_, *salvage_, error);
  if (Quorl::finishDrawing(*database_, index_, header_, error)) return true;
  // Without an object at fault it is the header that names the wrong ones.
  error.line = headerLine_;
  for (const Object& object : objects_)
    if (object.handle == error.object.value) error.line = object.line - 2;
  return false;
}

bool ZnTdocReader::failHere(ZnFileError& error, std::string what, std::string expected) const {
  error.line = line_;
  return error.fail(Quorl::eFileDamaged, {}, std::move(what), std::move(expected));
}

bool ZnTdocReader::next(int& code, std::string_view& value, ZnFileError& error) {
  line_ = lines_.line();
  if (lines_.atEnd()) return failHere(error, "the file ends too early", "a group code");
  return lines_.next(code, value) || failHere(error, lines_.fault(), lines_.expected());
}

bool ZnTdocReader::expect(int wanted, std::string& plain, ZnFileError& error) {
  int code = 0;
  std::string_view value;
  if (!next(code, value, error)) return false;
  if (code != wanted) return failHere(error, "group code " + std::to_string(code), std::to_string(wanted));
  return Quorl::unescape(value, plain) ||
         failHere(error, "a backslash that escapes nothing", "\\n, \\r or \\\\");
}

bool ZnTdocReader::expectSection(std::string_view name, ZnFileError& error) {
  std::string value;
  if (!expect(Quorl::kTdocSection, value, error)) return false;
  return value == name || failHere(error, "section " + value, "section " + std::string(name));
}

bool ZnTdocReader::expectChecksum(std::string_view section, size_t begin, ZnFileError& error) {
  const std::string_view hashed = text_.substr(begin, lines_.position() - begin);
  std::string value, is;
  if (!expect(Quorl::kTdocChecksum, value, error)) return false;
  std::uint64_t wanted = 0;
  if (!Quorl::parseHex(value, wanted)) return failHere(error, "no checksum", "hexadecimal digits");
  const std::uint64_t hash = XXH64(hashed.data(), hashed.size(), 0);
  if (hash == wanted) return true;
  Quorl::appendHex(is, hash);
  return failHere(error, "the checksum of section " + std::string(section) + " is " + is, value);
}

bool ZnTdocReader::expectInteger(int code, int& value, ZnFileError& error) {
  std::string text;
  std::int64_t number = 0;
  if (!expect(code, text, error)) return false;
  if (!Quorl::parseInteger(text, number) || number < std::numeric_limits<int>::min() ||
      number > std::numeric_limits<int>::max())
    return failHere(error, "no 32-bit integer", "an integer");
  value = static_cast<int>(number);
  return true;
}

bool ZnTdocReader::readMark(ZnFileError& error) {
  std::string mark;
  if (!expect(Quorl::kTdocSection, mark, error)) return false;
  const std::string_view wanted = Quorl::kTdocMark;
  if (!mark.starts_with(wanted)) return failHere(error, "no drawing file", "the mark of a drawing");
  std::int64_t version = 0;
  if (!Quorl::parseInteger(std::string_view(mark).substr(wanted.size()), version) || version < 1)
    return failHere(error, "no format version", std::to_string(Quorl::kTdocVersion));
  if (version == Quorl::kTdocVersion) return true;
  failHere(error, "format version " + std::to_string(version),
           std::to_string(Quorl::kTdocVersion) + " at most");
  error.status = Quorl::eNewerVersion;
  return false;
}

bool ZnTdocReader::readHeaderName(const char* name, ZnFileError& error) {
  std::string value;
  if (!expect(Quorl::kHeaderName, value, error)) return false;
  return value == name || failHere(error, "header value " + value, name);
}

bool ZnTdocReader::readHeaderHandle(const char* name, std::uint64_t& value, ZnFileError& error) {
  std::string text;
  if (!readHeaderName(name, error) || !expect(Quorl::kTdocHandle, text, error)) return false;
  return Quorl::parseHex(text, value) || failHere(error, "no handle", "hexadecimal digits");
}

bool ZnTdocReader::readHeader(ZnFileError& error) {
  if (!expectSection("HEADER", error)) return false;
  headerLine_ = line_;
  const size_t begin = lines_.position();
  for (size_t i = 0; i < ZnDrawingHeader::kIds; ++i)
    if (!readHeaderHandle(ZnDrawingHeader::idName(i), header_.handles[i], error)) return false;
  if (!readHeaderHandle("next-handle", header_.nextHandle, error)) return false;
  std::string text;
  std::int64_t count = 0;
  if (!readHeaderName("objects", error) || !expect(Quorl::kHeaderCount, text, error)) return false;
  if (!Quorl::parseInteger(text, count) || count < 0)
    return failHere(error, "\"" + text + "\"", "a count of objects");
  countLine_ = line_;
  header_.objectCount = static_cast<std::uint64_t>(count);
  const std::pair<const char*, int*> numbers[] = {{"version", &header_.version},
                                                  {"maintenance-version", &header_.maintenanceVersion},
                                                  {"insertion-units", &header_.insertionUnits}};
  for (const auto& [name, target] : numbers)
    if (!readHeaderName(name, error) || !expectInteger(Quorl::kHeaderInteger, *target, error)) return false;
  if (!readHeaderName("ucs", error)) return false;
  for (double& element : header_.ucs) {
    if (!expect(Quorl::kHeaderReal, text, error)) return false;
    if (!Quorl::parseDouble(text, element) || !std::isfinite(element))
      return failHere(error, "\"" + text + "\"", "a finite number");
  }
  for (;;) {
    const Quorl::TdocLines before = lines_;
    int code = 0;
    std::string_view value;
    if (!next(code, value, error)) return false;
    if (code != Quorl::kVariableName) {
      lines_ = before;
      return expectChecksum("HEADER", begin, error);
    }
    if (!Quorl::unescape(value, text))
      return failHere(error, "a backslash that escapes nothing", "\\n, \\r or \\\\");
    if (!readVariable(text, error)) return false;
  }
}

// Read as an object's item would be: the type follows from the code.
bool ZnTdocReader::readVariable(const std::string& name, ZnFileError& error) {
  ZnDbTextInFiler filer(lines_.rest(), nullptr, index_, lines_.line());
  ZnDbTdocItem item;
  line_ = lines_.line();
  if (filer.readItem(item) != Quorl::eOk) return failHere(error, filer.fault(), filer.expected());
  ZnRxVariableValue value;
  switch (std::find(std::begin(Quorl::kVariableCodes), std::end(Quorl::kVariableCodes), item.code) -
          std::begin(Quorl::kVariableCodes)) {
  case 0:
    value = ZnRxVariableValue::ofBool(item.integer != 0);
    break;
  case 1:
    value = ZnRxVariableValue::ofInt16(static_cast<std::int16_t>(item.integer));
    break;
  case 2:
    value = ZnRxVariableValue::ofInt32(static_cast<std::int32_t>(item.integer));
    break;
  case 3:
    value = ZnRxVariableValue::ofDouble(item.real);
    break;
  case 4:
    value = ZnRxVariableValue::ofString(item.text);
    break;
  default:
    return failHere(error, "group code " + std::to_string(item.code), "the code of a variable's value");
  }
  header_.variables.emplace_back(ZnString::fromUtf8(name), value);
  int code = 0;
  std::string_view passed;
  return next(code, passed, error);
}

bool ZnTdocReader::readClasses(ZnFileError& error) {
  if (!expectSection("CLASSES", error)) return false;
  const size_t begin = lines_.position();
  for (;;) {
    const Quorl::TdocLines before = lines_;
    int code = 0;
    std::string_view first;
    if (!next(code, first, error)) return false;
    lines_ = before;
    if (code == Quorl::kTdocChecksum) return expectChecksum("CLASSES", begin, error);
    if (!readClass(error)) return false;
  }
}

bool ZnTdocReader::readClass(ZnFileError& error) {
  ZnDbClassRecord record;
  ZnString* texts[] = {&record.name, &record.tdocName, &record.appName, &record.parentName};
  int* numbers[] = {&record.version, &record.maintenanceVersion, &record.proxyFlags};
  const size_t line = lines_.line();
  std::string value;
  for (size_t i = 0; i < std::size(texts); ++i) {
    if (!expect(Quorl::kClassTexts[i], value, error)) return false;
    *texts[i] = ZnString::fromUtf8(value);
  }
  for (size_t i = 0; i < std::size(numbers); ++i)
    if (!expectInteger(Quorl::kClassNumbers[i], *numbers[i], error)) return false;
  line_ = line;
  return classes_.add(record) ||
         failHere(error, "class \"" + record.name.utf8() + "\"", "a name that no other class has");
}

bool ZnTdocReader::scanObjects(ZnFileError& error) {
  if (!expectSection("OBJECTS", error)) return false;
  const size_t begin = lines_.position();
  for (;;) {
    const Quorl::TdocLines before = lines_;
    int code = 0;
    std::string_view value;
    if (!next(code, value, error)) return false;
    if (code == Quorl::kTdocObject) {
      lines_ = before;
      if (!scanObject(error)) return false;
      continue;
    }
    lines_ = before;
    if (code != Quorl::kTdocChecksum)
      return failHere(error, "group code " + std::to_string(code), "0, the start of an object");
    return expectChecksum("OBJECTS", begin, error);
  }
}

// Up to the next object or the end of the section; the fields are not looked into, but for the marker.
bool ZnTdocReader::scanObject(ZnFileError& error) {
  static const std::string bytesMarker = Quorl::toUtf8(kProxyDataMarker);
  std::string text;
  if (!expect(Quorl::kTdocObject, text, error)) return false;
  Object object;
  if (lastClass_ < 0 || classes_.label(lastClass_) != text) lastClass_ = classes_.numberOfLabel(text);
  if ((object.cls = lastClass_) < 0) return failHere(error, "class " + text, "a class of section CLASSES");
  if (!expect(Quorl::kTdocHandle, text, error)) return false;
  if (!Quorl::parseHex(text, object.handle)) return failHere(error, "no handle", "hexadecimal digits");
  object.line = lines_.line();
  object.begin = lines_.position();
  for (;;) {
    const Quorl::TdocLines before = lines_;
    int code = 0;
    std::string_view value;
    if (!next(code, value, error)) return false;
    if (Quorl::tdocType(code) == ZnTdocType::kMarker && value == bytesMarker) object.bytesMarked = true;
    if (code != Quorl::kTdocObject && code != Quorl::kTdocChecksum) continue;
    lines_ = before;
    object.end = lines_.position();
    objects_.push_back(object);
    return true;
  }
}

// Whoever edits by hand need not keep the order of handles.
bool ZnTdocReader::makeSlots(ZnFileError& error) {
  if (objects_.size() != header_.objectCount) {
    line_ = countLine_;
    return failHere(error, "a count of " + std::to_string(header_.objectCount) + " objects",
                    std::to_string(objects_.size()) + ", as many as there are");
  }
  const auto byHandle = [](const Object& a, const Object& b) { return a.handle < b.handle; };
  if (!std::is_sorted(objects_.begin(), objects_.end(), byHandle))
    std::stable_sort(objects_.begin(), objects_.end(), byHandle);
  for (const Object& object : objects_) {
    if (Quorl::addSlot(*database_, index_, object.handle, header_.nextHandle)) continue;
    line_ = object.line - 2;
    return failHere(
        error, "handle " + handleText(ZnDbHandle(object.handle)).utf8() + " is 0, given twice or too large",
        "a handle of its own, below next-handle");
  }
  index_.finish();
  return true;
}

bool ZnTdocReader::readObject(const Object& object, ZnFileError& error) {
  ZnDbTextInFiler filer(text_.substr(object.begin, object.end - object.begin), database_.get(), index_,
                        object.line);
  if (salvage_) filer.allowMissingOwner();
  const ZnRxClass* creatable = classes_.creatable(object.cls);
  std::unique_ptr<ZnDbObject> read;
  ErrorStatus status = Quorl::eOk;
  if (creatable && !object.bytesMarked) {
    read.reset(static_cast<ZnDbObject*>(creatable->create()));
    status = read->tdocInFields(filer);
    if (filer.status() != Quorl::eOk) status = filer.status();
    // Sections that the class does not know would be lost by the next save.
    if (status == Quorl::eOk && !filer.atEndOfObject()) status = filer.refuseRest();
  } else {
    read = zndbProxyFromText(*classes_.proxyClass(object.cls), filer, object.bytesMarked);
    status = filer.status();
    if (read && creatable)
      read = zndbObjectFromProxy(*zndbProxy(read.get()), *creatable, database_.get(), status);
  }
  if (read && status == Quorl::eOk) {
    Quorl::install(*database_, index_.find(object.handle), std::move(read));
    return true;
  }
  const std::string place =
      Quorl::objectPlace(ZnDbHandle(object.handle), classes_.record(object.cls).name.utf8());
  error.line = filer.faultLine();
  if (status == Quorl::eOk) status = Quorl::eFileDamaged;
  const bool told = filer.status() == status && !filer.fault().empty();
  return error.fail(status, place,
                    told ? filer.fault() : std::string("can't be read: ") + Quorl::errorStatusText(status),
                    told ? filer.expected() : std::string("the fields of its class"));
}

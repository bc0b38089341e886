#include "quorl/file/bdoc_reader.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "quorl/file/bdoc_records.h"
#include "quorl/file/drawing_sources.h"
#include "quorl/file/proxy_conversion.h"
#include "quorl/file/record_filer.h"
#include "quorl/file/salvage.h"

using Quorl::ErrorStatus;

namespace {

constexpr std::uint64_t kLargestHandle = std::uint64_t{1} << 62;

// The section may be compressed: a place within it is counted in what it holds.
std::string placeIn(const std::string& place, const ZnByteReader& in) {
  return place + " at its byte " + std::to_string(in.position());
}

bool failInSection(ZnFileError& error, const std::string& place, const ZnByteReader& in, std::string what,
                   std::string expected) {
  return error.fail(Quorl::eFileDamaged, placeIn(place, in), std::move(what), std::move(expected));
}

ZnString takeString(ZnByteReader& in) { return ZnString::fromUtf8(in.takeText()); }

template<class T> bool isWhole(double value) {
  return value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max() &&
         static_cast<double>(static_cast<T>(value)) == value;
}

bool takeValue(ZnByteReader& in, ZnRxVariableValue& value) {
  const auto type = in.take<std::uint8_t>();
  if (type == static_cast<std::uint8_t>(ZnRxVariableType::kString)) {
    value = ZnRxVariableValue::ofString(takeString(in));
    return in.isGood();
  }
  const auto number = in.take<double>();
  if (!in.isGood()) return false;
  switch (static_cast<ZnRxVariableType>(type)) {
  case ZnRxVariableType::kBool:
    value = ZnRxVariableValue::ofBool(number != 0.0);
    return true;
  case ZnRxVariableType::kInt16:
    if (isWhole<std::int16_t>(number)) value = ZnRxVariableValue::ofInt16(static_cast<std::int16_t>(number));
    return isWhole<std::int16_t>(number);
  case ZnRxVariableType::kInt32:
    if (isWhole<std::int32_t>(number)) value = ZnRxVariableValue::ofInt32(static_cast<std::int32_t>(number));
    return isWhole<std::int32_t>(number);
  case ZnRxVariableType::kDouble:
    value = ZnRxVariableValue::ofDouble(number);
    return true;
  default:
    return false;
  }
}

} // namespace

std::unique_ptr<ZnDbDatabase> ZnBdocReader::read(ZnFileError& error) {
  if (!openContainer(error)) return nullptr;
  database_ = Quorl::drawingToFill();
  const bool prepared = readAll(ZnSectionType::kHeader, &ZnBdocReader::readHeader, error) &&
                        readAll(ZnSectionType::kClasses, &ZnBdocReader::readClasses, error) &&
                        readAll(ZnSectionType::kNames, &ZnBdocReader::readNames, error) &&
                        readAll(ZnSectionType::kHandles, &ZnBdocReader::readHandles, error);
  if (!prepared || !checkCounts(error)) return nullptr;
  index_.finish();
  if (!(salvage_ ? salvageObjects() : readAll(ZnSectionType::kObjects, &ZnBdocReader::readObjects, error)))
    return nullptr;
  if (!finish(error)) return nullptr;
  return std::move(database_);
}

bool ZnBdocReader::checkCounts(ZnFileError& error) {
  if (hasHeader_ && index_.size() == header_.objectCount) return true;
  error.fail(Quorl::eFileDamaged, endPlace(),
             hasHeader_ ? std::to_string(index_.size()) + " handles" : "no section header",
             hasHeader_ ? std::to_string(header_.objectCount) + ", as the header says" : "one");
  return passesOver(error);
}

bool ZnBdocReader::finish(ZnFileError& error) {
  if (!salvage_ && objectsRead_ != index_.size())
    return error.fail(Quorl::eFileDamaged, endPlace(),
                      std::to_string(objectsRead_) + " objects in the sections",
                      std::to_string(index_.size()));
  if (salvage_) return Quorl::finishSalvaged(*database_, index_, header_, *salvage_, error);
  if (Quorl::finishDrawing(*database_, index_, header_, error)) return true;
  error.place = endPlace() + ", " + error.place;
  return false;
}

// Behind the last section, where what is missing would have to come.
std::string ZnBdocReader::endPlace() const {
  const auto& sections = container_.sections();
  return Quorl::bytePlace(sections.empty() ? 0 : sections.back().offset + sections.back().storedSize);
}

// What the sections of objects could hold if every record were as short as a record can be.
std::uint64_t ZnBdocReader::mostObjects() const {
  std::uint64_t bytes = 0;
  for (const Section& section : container_.sections())
    if (section.type == ZnSectionType::kObjects) bytes += section.rawSize;
  return bytes / Quorl::kLeastRecord;
}

bool ZnBdocReader::readAll(ZnSectionType type, Part part, ZnFileError& error) {
  for (const Section& section : container_.sections())
    if (section.type == type && !readPart(section, part, error) && !passesOver(error)) return false;
  return true;
}

bool ZnBdocReader::readPart(const Section& section, Part part, ZnFileError& error) {
  if (salvage_)
    container_.salvage(section, raw_, *salvage_);
  else if (!container_.read(section, raw_, error))
    return false;
  ZnByteReader in(raw_);
  const std::string place = section.place();
  return (this->*part)(in, place, error) &&
         (in.atEnd() || failInSection(error, place, in, "bytes behind its contents", "its end"));
}

bool ZnBdocReader::readHeader(ZnByteReader& in, const std::string& place, ZnFileError& error) {
  if (hasHeader_) return failInSection(error, place, in, "a second header", "one");
  hasHeader_ = true;
  for (std::uint64_t& handle : header_.handles) handle = in.take<std::uint64_t>();
  header_.nextHandle = in.take<std::uint64_t>();
  header_.objectCount = in.take<std::uint64_t>();
  for (int* number : {&header_.version, &header_.maintenanceVersion, &header_.insertionUnits})
    *number = in.take<std::int32_t>();
  for (double& element : header_.ucs) {
    element = in.take<double>();
    if (!std::isfinite(element)) return failInSection(error, place, in, "an infinite axis", "a number");
  }
  if (header_.objectCount > mostObjects())
    return failInSection(error, place, in, std::to_string(header_.objectCount) + " objects",
                         std::to_string(mostObjects()) + " at most in a file of this size");
  for (std::uint64_t count = in.takeCount(); count > 0 && in.isGood(); --count) {
    const ZnString name = takeString(in);
    ZnRxVariableValue value;
    if (!takeValue(in, value)) in.setBad();
    header_.variables.emplace_back(name, value);
  }
  return in.isGood() ||
         failInSection(error, place, in, "values that can't be read", "handles, numbers and variables");
}

bool ZnBdocReader::readClasses(ZnByteReader& in, const std::string& place, ZnFileError& error) {
  if (hasClasses_) return failInSection(error, place, in, "a second class section", "one");
  hasClasses_ = true;
  for (std::uint64_t count = in.takeCount(); count > 0; --count) {
    ZnDbClassRecord record;
    for (ZnString* text : {&record.name, &record.tdocName, &record.appName, &record.parentName})
      *text = takeString(in);
    for (int* number : {&record.version, &record.maintenanceVersion, &record.proxyFlags})
      *number = in.take<std::int32_t>();
    if (!in.isGood() || !classes_.add(record))
      return failInSection(error, place, in, "class \"" + record.name.utf8() + "\"", "a name of its own");
  }
  return true;
}

bool ZnBdocReader::readNames(ZnByteReader& in, const std::string& place, ZnFileError& error) {
  while (in.isGood() && !in.atEnd()) names_.push_back(ZnAtom::of(Quorl::fromUtf8(in.takeText())));
  return in.isGood() ||
         failInSection(error, place, in, "a name that can't be read", "its length and letters");
}

bool ZnBdocReader::readHandles(ZnByteReader& in, const std::string& place, ZnFileError& error) {
  while (!in.atEnd()) {
    const std::uint64_t step = in.takeCount(), cls = in.takeCount();
    if (!in.isGood())
      return failInSection(error, place, in, "a count that can't be read", "at most ten bytes");
    const std::uint64_t handle = index_.lastHandle() + step;
    if (cls >= classes_.size())
      return failInSection(error, place, in, "class number " + std::to_string(cls),
                           "below " + std::to_string(classes_.size()));
    if (index_.size() == header_.objectCount && (!salvage_ || hasHeader_))
      return failInSection(error, place, in, "a handle too many",
                           std::to_string(header_.objectCount) + " handles");
    if (salvage_) header_.nextHandle = std::min(std::max(handle + 1, header_.nextHandle), kLargestHandle);
    if (salvage_ && salvage_->isLost(handle))
      index_.add(handle, {});
    else if (!Quorl::addSlot(*database_, index_, handle, header_.nextHandle))
      return failInSection(error, place, in, "handle " + handleText(ZnDbHandle(handle)).utf8(),
                           "above " + handleText(ZnDbHandle(index_.lastHandle())).utf8() + ", below " +
                               handleText(ZnDbHandle(header_.nextHandle)).utf8());
    classOf_.push_back(static_cast<std::uint32_t>(cls));
  }
  return true;
}

bool ZnBdocReader::readObjects(ZnByteReader& in, const std::string& place, ZnFileError& error) {
  while (!in.atEnd()) {
    if (objectsRead_ == index_.size())
      return failInSection(error, place, in, "an object too many",
                           std::to_string(index_.size()) + " objects");
    const ZnDbObjectId id = index_.at(objectsRead_);
    const std::uint64_t handle = index_.handleAt(objectsRead_);
    const int cls = static_cast<int>(classOf_[objectsRead_]);
    std::string_view text;
    bool isText = false;
    std::string fault;
    ErrorStatus status = Quorl::eFileDamaged;
    std::unique_ptr<ZnDbObject> object;
    const bool isRecord = readRecord(in, handle, text, isText, fault);
    if (isRecord && id.isNull()) { // left out
      ++objectsRead_;
      continue;
    }
    if (isRecord) object = readFields(cls, isText ? &text : nullptr, status);
    if (!object) {
      error.fail(status,
                 placeIn(place, in) + ", " +
                     Quorl::objectPlace(ZnDbHandle(handle), classes_.record(cls).name.utf8()),
                 fault.empty() ? std::string("can't be read: ") + Quorl::errorStatusText(status) : fault,
                 "the record of its class");
      // Without the end of its record nobody knows where the next one begins.
      if (!in.isGood() || !loses(id, error)) return false;
    } else {
      Quorl::install(*database_, id, std::move(object));
    }
    ++objectsRead_;
  }
  return true;
}

bool ZnBdocReader::readRecord(ZnByteReader& in, std::uint64_t handle, std::string_view& text, bool& isText,
                              std::string& fault) {
  fault = "its record can't be read";
  const auto flags = in.take<std::uint8_t>();
  const std::uint64_t bytes = in.takeCount(), references = in.takeCount(), atoms = in.takeCount();
  isText = flags == Quorl::kRecordHasText;
  const std::uint64_t textBytes = isText ? in.takeCount() : 0;
  if (!in.isGood() || flags > Quorl::kRecordHasText) return false;
  record_.clear();
  record_.bytes.assign(in.takeRaw(bytes));
  if (!readReferences(in, references, handle, fault)) {
    in.setBad();
    return false;
  }
  if (atoms > in.remaining()) {
    in.setBad();
    return false;
  }
  bool areNamed = true;
  for (std::uint64_t i = 0; i < atoms; ++i) {
    const std::uint64_t number = in.takeCount();
    areNamed = areNamed && number < names_.size();
    record_.atoms.push_back(number < names_.size() ? names_[number] : ZnAtom());
  }
  text = in.takeRaw(textBytes);
  if (in.isGood() && areNamed) fault.clear();
  return in.isGood() && areNamed;
}

// A handle that names nothing gives a null reference, as if its object had been erased. The owner, which
// every object names first, is another matter: without it the object would hang in the air.
bool ZnBdocReader::readReferences(ZnByteReader& in, std::uint64_t count, std::uint64_t handle,
                                  std::string& fault) {
  if (!in.isGood() || count > in.remaining()) return false;
  for (std::uint64_t i = 0; i < count; ++i) {
    const auto mark = in.take<std::uint8_t>();
    if (mark >= 2 * Quorl::kNullReference) return false;
    ZnDbReference reference;
    reference.kind = static_cast<ZnReferenceKind>(mark % Quorl::kNullReference);
    if (mark < Quorl::kNullReference) {
      const std::uint64_t target = handle + static_cast<std::uint64_t>(zndbUnzigzag(in.takeCount()));
      reference.id = index_.find(target);
      if (i == 0 && reference.id.isNull() && !salvage_) {
        fault = "its owner " + handleText(ZnDbHandle(target)).utf8() + " is not in the file";
        return false;
      }
    }
    record_.references.push_back(reference);
  }
  return in.isGood();
}

std::unique_ptr<ZnDbObject> ZnBdocReader::readFields(int cls, const std::string_view* text,
                                                     ErrorStatus& status) {
  ZnDbRecordFiler filer(record_, database_.get());
  const ZnRxClass* creatable = classes_.creatable(cls);
  if (!creatable || text) {
    std::unique_ptr<ZnDbObject> proxy = zndbProxyFromRecord(*classes_.proxyClass(cls), filer, text);
    status = filer.status();
    if (!proxy && status == Quorl::eOk) status = Quorl::eFileDamaged;
    if (!proxy || !creatable) return proxy;
    return zndbObjectFromProxy(*zndbProxy(proxy.get()), *creatable, database_.get(), status);
  }
  std::unique_ptr<ZnDbObject> object(static_cast<ZnDbObject*>(creatable->create()));
  status = object->bdocInFields(filer);
  if (status == Quorl::eOk) status = filer.status();
  // Fields that the class does not know would be lost by the next save.
  if (status == Quorl::eOk && !filer.atEnd()) status = Quorl::eFileDamaged;
  return status == Quorl::eOk ? std::move(object) : nullptr;
}

#include "quorl/file/text_in_filer.h"

#include <limits>

#include "quorl/file/handle_index.h"

using Quorl::ErrorStatus;

ZnDbTextInFiler::ZnDbTextInFiler(std::string_view lines, ZnDbDatabase* database, const ZnHandleIndex& index,
                                 size_t firstLine)
    : lines_(lines, firstLine)
    , database_(database)
    , index_(&index)
    , lastLine_(firstLine) {}

ZnDbTextInFiler::ZnDbTextInFiler(std::string_view lines, ZnDbDatabase* database,
                                 const std::vector<ZnDbReference>& apart)
    : lines_(lines)
    , database_(database)
    , apart_(&apart) {}

ErrorStatus ZnDbTextInFiler::fail(ErrorStatus status, std::string fault, std::string expected) {
  fault_ = std::move(fault);
  expected_ = std::move(expected);
  return status_ = status;
}

bool ZnDbTextInFiler::nextPair(int& code, std::string_view& value) {
  if (lines_.next(code, value)) return true;
  fail(Quorl::eFileDamaged, lines_.fault(), lines_.expected());
  return false;
}

bool ZnDbTextInFiler::atSubclassData(const wchar_t* name) {
  if (atEndOfObject()) return false;
  const size_t position = lines_.position(), line = lines_.line();
  int code = 0;
  std::string_view value;
  if (!nextPair(code, value)) return false;
  if (Quorl::tdocType(code) == ZnTdocType::kMarker && Quorl::unescape(value, plain_) &&
      plain_ == Quorl::toUtf8(name))
    return true;
  lines_.moveTo(position, line);
  return false;
}

ErrorStatus ZnDbTextInFiler::readItem(ZnDbTdocItem& item) {
  if (status_ != Quorl::eOk) return status_;
  if (lines_.atEnd())
    return fail(Quorl::eFilerError, "the object's items end too early", "the rest of its fields");
  lastPosition_ = lines_.position();
  lastLine_ = lines_.line();
  lastApart_ = nextApart_;
  std::string_view value;
  if (!nextPair(item.code, value)) return status_;
  return readValue(item, value);
}

void ZnDbTextInFiler::pushBackItem() {
  lines_.moveTo(lastPosition_, lastLine_);
  nextApart_ = lastApart_;
}

ErrorStatus ZnDbTextInFiler::readValue(ZnDbTdocItem& item, std::string_view value) {
  switch (Quorl::tdocType(item.code)) {
  case ZnTdocType::kText:
  case ZnTdocType::kMarker:
    if (!Quorl::unescape(value, plain_))
      return fail(Quorl::eFileDamaged, "a backslash that escapes nothing", "\\n, \\r or \\\\");
    item.text = ZnString::fromUtf8(plain_);
    return status_;
  case ZnTdocType::kPoint:
    if (!Quorl::parseDouble(value, item.point.x))
      return fail(Quorl::eFileDamaged, "no number", "a coordinate");
    return readPoint(item);
  case ZnTdocType::kDouble:
    if (!Quorl::parseDouble(value, item.real)) return fail(Quorl::eFileDamaged, "no number", "a number");
    return status_;
  case ZnTdocType::kInt16:
    return readInteger(value, std::numeric_limits<std::int16_t>::min(),
                       std::numeric_limits<std::int16_t>::max(), item.integer);
  case ZnTdocType::kInt32:
    return readInteger(value, std::numeric_limits<std::int32_t>::min(),
                       std::numeric_limits<std::int32_t>::max(), item.integer);
  case ZnTdocType::kInt64:
    return readInteger(value, std::numeric_limits<std::int64_t>::min(),
                       std::numeric_limits<std::int64_t>::max(), item.integer);
  case ZnTdocType::kBool:
    return readInteger(value, 0, 1, item.integer);
  case ZnTdocType::kBytes:
    plain_.clear();
    if (!Quorl::parseHexBytes(value, plain_))
      return fail(Quorl::eFileDamaged, "no hexadecimal bytes", "pairs of hexadecimal digits");
    item.text = ZnString::fromUtf8(value);
    return status_;
  case ZnTdocType::kReference:
    return readReference(item.code, value, item.id);
  default:
    return fail(Quorl::eUnexpectedGroupCode,
                "group code " + std::to_string(item.code) + " in an object's fields",
                "a code that has a type");
  }
}

ErrorStatus ZnDbTextInFiler::readInteger(std::string_view value, std::int64_t least, std::int64_t most,
                                         std::int64_t& target) {
  if (Quorl::parseInteger(value, target) && target >= least && target <= most) return status_;
  return fail(Quorl::eFileDamaged, "no such integer",
              "a number from " + std::to_string(least) + " to " + std::to_string(most));
}

ErrorStatus ZnDbTextInFiler::readPoint(ZnDbTdocItem& item) {
  const struct {
    int code;
    double* target;
  } parts[] = {{item.code + Quorl::kToY, &item.point.y}, {item.code + Quorl::kToZ, &item.point.z}};
  for (const auto& part : parts) {
    int code = 0;
    std::string_view value;
    if (lines_.atEnd())
      return fail(Quorl::eFilerError, "the point's coordinates end too early", "x, y and z");
    if (!nextPair(code, value)) return status_;
    if (code != part.code)
      return fail(Quorl::eUnexpectedGroupCode, "group code " + std::to_string(code) + " within a point",
                  std::to_string(part.code));
    if (!Quorl::parseDouble(value, *part.target))
      return fail(Quorl::eFileDamaged, "no number", "a coordinate");
  }
  item.real = item.point.x;
  return status_;
}

ErrorStatus ZnDbTextInFiler::readReference(int code, std::string_view value, ZnDbObjectId& id) {
  if (apart_) {
    if (nextApart_ == apart_->size())
      return fail(Quorl::eFilerError, "the object's references end too early", "one for each");
    id = (*apart_)[nextApart_++].id;
    return status_;
  }
  std::uint64_t handle = 0;
  if (!Quorl::parseHex(value, handle)) return fail(Quorl::eFileDamaged, "no handle", "hexadecimal digits");
  id = index_->find(handle);
  const bool isOwner = lastPosition_ == 0 && code == Quorl::tdocReferenceCode(ZnReferenceKind::kSoftPointer);
  if (isOwner && id.isNull() && handle != 0 && !ownerMayBeMissing_)
    return fail(Quorl::eInvalidOwner, "the owner " + std::string(value) + " is not in the file",
                "the handle of an object");
  return status_;
}

ErrorStatus ZnDbTextInFiler::refuseRest() {
  lastLine_ = lines_.line();
  int code = 0;
  std::string_view value;
  if (!nextPair(code, value)) return status_;
  return fail(Quorl::eUnexpectedGroupCode,
              "group code " + std::to_string(code) + " with \"" + std::string(value.substr(0, 60)) +
                  "\" behind the fields of its class",
              "the next object");
}

ErrorStatus ZnDbTextInFiler::takeRest(ZnDbObjectRecord& rest) {
  rest.clear();
  while (status_ == Quorl::eOk && !lines_.atEnd()) {
    lastPosition_ = lines_.position();
    lastLine_ = lines_.line();
    int code = 0;
    std::string_view value;
    if (!nextPair(code, value)) break;
    const ZnTdocType type = Quorl::tdocType(code);
    if (type == ZnTdocType::kReference) {
      ZnDbObjectId id;
      if (readReference(code, value, id) != Quorl::eOk) break;
      rest.references.push_back({Quorl::tdocReferenceKind(code), id});
      value = {};
    }
    Quorl::appendInteger(rest.bytes, code);
    (rest.bytes += '\n').append(value) += '\n';
  }
  return status_;
}

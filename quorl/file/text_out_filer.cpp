#include "quorl/file/text_out_filer.h"

#include <limits>

#include "quorl/file/tdoc_items.h"

using Quorl::tdocType;

namespace {

template<class T> bool fitsIn(std::int64_t value) {
  return value >= std::numeric_limits<T>::min() && value <= std::numeric_limits<T>::max();
}

} // namespace

bool ZnDbTextOutFiler::begin(int code, bool fits) {
  if (status_ != Quorl::eOk) return false;
  if (!fits) {
    status_ = Quorl::eUnexpectedGroupCode;
    return false;
  }
  Quorl::appendInteger(text_, code);
  text_ += '\n';
  return true;
}

void ZnDbTextOutFiler::writeSubclassMarker(const wchar_t* name) {
  constexpr int kMarker = 100;
  begin(kMarker, true);
  Quorl::appendEscaped(text_, Quorl::toUtf8(name));
  end();
}

void ZnDbTextOutFiler::writeBool(int code, bool value) {
  if (!begin(code, tdocType(code) == ZnTdocType::kBool)) return;
  text_ += value ? '1' : '0';
  end();
}

void ZnDbTextOutFiler::writeInteger(int code, std::int64_t value) {
  const ZnTdocType type = tdocType(code);
  const bool narrow = type == ZnTdocType::kInt16, wide = type == ZnTdocType::kInt32;
  if (!begin(code, narrow || wide || type == ZnTdocType::kInt64)) return;
  if ((narrow && !fitsIn<std::int16_t>(value)) || (wide && !fitsIn<std::int32_t>(value)))
    status_ = Quorl::eOutOfRange;
  Quorl::appendInteger(text_, value);
  end();
}

void ZnDbTextOutFiler::writeDouble(int code, double value) {
  if (!begin(code, tdocType(code) == ZnTdocType::kDouble)) return;
  Quorl::appendDouble(text_, value);
  end();
}

void ZnDbTextOutFiler::writeString(int code, const ZnString& value) {
  if (!begin(code, tdocType(code) == ZnTdocType::kText)) return;
  const size_t start = text_.size();
  Quorl::appendEscaped(text_, value.utf8());
  if (text_.size() - start > Quorl::kLongestLine) status_ = Quorl::eOutOfRange;
  end();
}

void ZnDbTextOutFiler::putPoint(int code, double x, double y, double z) {
  if (!begin(code, tdocType(code) == ZnTdocType::kPoint)) return;
  Quorl::appendDouble(text_, x);
  end();
  writeDouble(code + Quorl::kToY, y);
  writeDouble(code + Quorl::kToZ, z);
}

void ZnDbTextOutFiler::writePoint3d(int code, const ZnGePoint3d& value) {
  putPoint(code, value.x, value.y, value.z);
}

void ZnDbTextOutFiler::writeVector3d(int code, const ZnGeVector3d& value) {
  putPoint(code, value.x, value.y, value.z);
}

void ZnDbTextOutFiler::writeBytes(int code, const void* bytes, size_t count) {
  if (!begin(code, tdocType(code) == ZnTdocType::kBytes)) return;
  if (count > Quorl::kLongestLine / 2)
    status_ = Quorl::eOutOfRange;
  else
    Quorl::appendHexBytes(text_, {static_cast<const char*>(bytes), count});
  end();
}

void ZnDbTextOutFiler::writeId(int code, ZnDbObjectId id) {
  if (!begin(code, tdocType(code) == ZnTdocType::kReference)) return;
  if (apart_)
    apart_->push_back({Quorl::tdocReferenceKind(code), id});
  else
    Quorl::appendHex(text_, id.isErased() ? 0 : id.handle().value);
  end();
}

void ZnDbTextOutFiler::writeLines(std::string_view lines, const std::vector<ZnDbReference>& references) {
  Quorl::TdocLines source(lines);
  size_t next = 0;
  int code = 0;
  std::string_view value;
  while (!source.atEnd() && source.next(code, value)) {
    if (tdocType(code) == ZnTdocType::kReference && next < references.size()) {
      writeId(code, references[next++].id);
      continue;
    }
    Quorl::appendInteger(text_, code);
    (text_ += '\n').append(value) += '\n';
  }
}

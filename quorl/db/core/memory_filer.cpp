#include "quorl/db/core/memory_filer.h"

#include <cstring>

template<class T> T ZnDbMemoryFiler::take() {
  T value{};
  if (status_ != Quorl::eOk) return value;
  if (remaining() < sizeof(T)) {
    status_ = Quorl::eFilerError;
    return value;
  }
  std::memcpy(&value, bytes_.data() + at_, sizeof(T));
  at_ += sizeof(T);
  return value;
}

template std::int8_t ZnDbMemoryFiler::take<std::int8_t>();
template std::int16_t ZnDbMemoryFiler::take<std::int16_t>();
template std::int32_t ZnDbMemoryFiler::take<std::int32_t>();
template std::int64_t ZnDbMemoryFiler::take<std::int64_t>();
template double ZnDbMemoryFiler::take<double>();
template const ZnAtom::Entry* ZnDbMemoryFiler::take<const ZnAtom::Entry*>();
template ZnDbSlot* ZnDbMemoryFiler::take<ZnDbSlot*>();

std::string ZnDbMemoryFiler::takeBytes() {
  bytes_.resize(used_);
  used_ = 0;
  return std::move(bytes_);
}

void ZnDbMemoryFiler::setBytes(std::string bytes) {
  bytes_ = std::move(bytes);
  used_ = bytes_.size();
  rewind();
}

void ZnDbMemoryFiler::rewind() {
  at_ = 0;
  status_ = Quorl::eOk;
}

void ZnDbMemoryFiler::clear() {
  used_ = 0;
  rewind();
}

void ZnDbMemoryFiler::writeString(const ZnString& value) {
  const std::wstring_view text = value.view();
  writeBytes(text.data(), text.size() * sizeof(wchar_t));
}

void ZnDbMemoryFiler::writeBytes(const void* bytes, size_t count) {
  put(count);
  if (count > 0) putBytes(bytes, count); // nothing may come without an address
}

ZnString ZnDbMemoryFiler::readString() {
  const std::string bytes = readBytes();
  std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
  return ZnString(text);
}

std::string ZnDbMemoryFiler::readBytes() {
  const auto count = static_cast<size_t>(take<std::int64_t>());
  if (status_ != Quorl::eOk) return {};
  if (count > remaining()) {
    status_ = Quorl::eFilerError;
    return {};
  }
  std::string bytes = bytes_.substr(at_, count);
  at_ += count;
  return bytes;
}

void ZnDbIdCollector::clear() {
  softPointers.clear();
  hardPointers.clear();
  softOwned.clear();
  hardOwned.clear();
}

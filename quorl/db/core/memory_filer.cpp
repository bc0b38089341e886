#include "quorl/db/core/memory_filer.h"

#include <algorithm>
#include <cstring>

// Room grows ahead of what is used: most fields are a few bytes, and there are many.
void ZnDbMemoryFiler::grow(size_t count) {
  constexpr size_t kFirstRoom = 256;
  bytes_.resize(std::max(bytes_.size() * 2, used_ + count + kFirstRoom));
}

void ZnDbMemoryFiler::putBytes(const void* bytes, size_t count) {
  if (bytes_.size() - used_ < count) grow(count);
  std::memcpy(bytes_.data() + used_, bytes, count);
  used_ += count;
}

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

void ZnDbMemoryFiler::copyBytes(std::string_view bytes) {
  clear();
  putBytes(bytes.data(), bytes.size());
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

// Filers in memory: an object's fields as bytes for undo, cloning and comparison, and the walk over its ids.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "quorl/db/core/filer.h"

// Writes to and reads from a string of bytes. Ids and atoms stand in them as addresses, so the bytes are good
// within this process only.
class ZnDbMemoryFiler : public ZnDbFiler {
public:
  explicit ZnDbMemoryFiler(Kind kind, ZnDbDatabase* database = nullptr)
      : kind_(kind)
      , database_(database) {}

  Kind kind() const override { return kind_; }
  Quorl::ErrorStatus status() const override { return status_; }
  void setStatus(Quorl::ErrorStatus status) override { status_ = status; }
  ZnDbDatabase* database() const override { return database_; }

  std::string_view bytes() const { return {bytes_.data(), used_}; }
  std::string takeBytes();
  // Reads these bytes from the start.
  void setBytes(std::string bytes);
  void rewind();
  // Forgets what was written and keeps the memory for what comes next.
  void clear();
  void reserve(size_t count) { bytes_.resize(count); }

  void writeBool(bool value) override { put(static_cast<std::int8_t>(value)); }
  void writeInt8(std::int8_t value) override { put(value); }
  void writeInt16(std::int16_t value) override { put(value); }
  void writeInt32(std::int32_t value) override { put(value); }
  void writeInt64(std::int64_t value) override { put(value); }
  void writeDouble(double value) override { put(value); }
  void writeString(const ZnString& value) override;
  void writeAtom(ZnAtom value) override { put(value.address()); }
  void writeBytes(const void* bytes, size_t count) override;
  void writeSoftPointerId(ZnDbObjectId id) override { put(id.slot()); }
  void writeHardPointerId(ZnDbObjectId id) override { put(id.slot()); }
  void writeSoftOwnershipId(ZnDbObjectId id) override { put(id.slot()); }
  void writeHardOwnershipId(ZnDbObjectId id) override { put(id.slot()); }

  bool readBool() override { return take<std::int8_t>() != 0; }
  std::int8_t readInt8() override { return take<std::int8_t>(); }
  std::int16_t readInt16() override { return take<std::int16_t>(); }
  std::int32_t readInt32() override { return take<std::int32_t>(); }
  std::int64_t readInt64() override { return take<std::int64_t>(); }
  double readDouble() override { return take<double>(); }
  ZnString readString() override;
  ZnAtom readAtom() override { return ZnAtom::fromAddress(take<const ZnAtom::Entry*>()); }
  std::string readBytes() override;
  ZnDbObjectId readSoftPointerId() override { return translated(readId(), false); }
  ZnDbObjectId readHardPointerId() override { return translated(readId(), false); }
  ZnDbObjectId readSoftOwnershipId() override { return translated(readId(), true); }
  ZnDbObjectId readHardOwnershipId() override { return translated(readId(), true); }
  size_t remaining() const override { return used_ - at_; }

protected:
  // What an id that is read becomes; the base leaves it as it is.
  virtual ZnDbObjectId translated(ZnDbObjectId id, bool /*owned*/) const { return id; }

private:
  ZnDbObjectId readId() { return ZnDbObjectId(take<ZnDbSlot*>()); }
  template<class T> void put(const T& value) { putBytes(&value, sizeof(T)); }
  void putBytes(const void* bytes, size_t count) {
    if (bytes_.size() - used_ < count) bytes_.resize(std::max(bytes_.size() * 2, used_ + count + kFirstRoom));
    std::memcpy(bytes_.data() + used_, bytes, count);
    used_ += count;
  }
  template<class T> T take();

  Kind kind_;
  ZnDbDatabase* database_;
  Quorl::ErrorStatus status_ = Quorl::eOk;
  // Room grows ahead of what is used: most fields are a few bytes, and there are many.
  static constexpr size_t kFirstRoom = 256;
  std::string bytes_;
  size_t used_ = 0;
  size_t at_ = 0;
};

// Collects the ids that an object's fields name, by kind of reference; everything else is dropped.
class ZnDbIdCollector : public ZnDbFiler {
public:
  std::vector<ZnDbObjectId> softPointers, hardPointers, softOwned, hardOwned;

  Kind kind() const override { return kIds; }
  Quorl::ErrorStatus status() const override { return Quorl::eOk; }
  void setStatus(Quorl::ErrorStatus) override {}
  ZnDbDatabase* database() const override { return nullptr; }
  void clear();

  void writeBool(bool) override {}
  void writeInt8(std::int8_t) override {}
  void writeInt16(std::int16_t) override {}
  void writeInt32(std::int32_t) override {}
  void writeInt64(std::int64_t) override {}
  void writeDouble(double) override {}
  void writeString(const ZnString&) override {}
  void writeAtom(ZnAtom) override {}
  void writeBytes(const void*, size_t) override {}
  void writeSoftPointerId(ZnDbObjectId id) override { keep(softPointers, id); }
  void writeHardPointerId(ZnDbObjectId id) override { keep(hardPointers, id); }
  void writeSoftOwnershipId(ZnDbObjectId id) override { keep(softOwned, id); }
  void writeHardOwnershipId(ZnDbObjectId id) override { keep(hardOwned, id); }

  // It never gives anything back.
  bool readBool() override { return false; }
  std::int8_t readInt8() override { return 0; }
  std::int16_t readInt16() override { return 0; }
  std::int32_t readInt32() override { return 0; }
  std::int64_t readInt64() override { return 0; }
  double readDouble() override { return 0.0; }
  ZnString readString() override { return {}; }
  ZnAtom readAtom() override { return {}; }
  std::string readBytes() override { return {}; }
  ZnDbObjectId readSoftPointerId() override { return {}; }
  ZnDbObjectId readHardPointerId() override { return {}; }
  ZnDbObjectId readSoftOwnershipId() override { return {}; }
  ZnDbObjectId readHardOwnershipId() override { return {}; }
  size_t remaining() const override { return 0; }

private:
  static void keep(std::vector<ZnDbObjectId>& list, ZnDbObjectId id) {
    if (!id.isNull()) list.push_back(id);
  }
};

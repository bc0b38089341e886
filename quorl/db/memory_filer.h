// Filers in memory: an object's fields as bytes for undo, cloning and comparison, and the walk over its ids.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "quorl/db/filer.h"

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

  void wrBool(bool value) override { put(static_cast<std::int8_t>(value)); }
  void wrInt8(std::int8_t value) override { put(value); }
  void wrInt16(std::int16_t value) override { put(value); }
  void wrInt32(std::int32_t value) override { put(value); }
  void wrInt64(std::int64_t value) override { put(value); }
  void wrDouble(double value) override { put(value); }
  void wrString(const ZnString& value) override;
  void wrAtom(ZnAtom value) override { put(value.address()); }
  void wrBytes(const void* bytes, size_t count) override;
  void wrSoftPointerId(ZnDbObjectId id) override { put(id.slot()); }
  void wrHardPointerId(ZnDbObjectId id) override { put(id.slot()); }
  void wrSoftOwnershipId(ZnDbObjectId id) override { put(id.slot()); }
  void wrHardOwnershipId(ZnDbObjectId id) override { put(id.slot()); }

  bool rdBool() override { return take<std::int8_t>() != 0; }
  std::int8_t rdInt8() override { return take<std::int8_t>(); }
  std::int16_t rdInt16() override { return take<std::int16_t>(); }
  std::int32_t rdInt32() override { return take<std::int32_t>(); }
  std::int64_t rdInt64() override { return take<std::int64_t>(); }
  double rdDouble() override { return take<double>(); }
  ZnString rdString() override;
  ZnAtom rdAtom() override { return ZnAtom::fromAddress(take<const ZnAtom::Entry*>()); }
  std::string rdBytes() override;
  ZnDbObjectId rdSoftPointerId() override { return translated(readId(), false); }
  ZnDbObjectId rdHardPointerId() override { return translated(readId(), false); }
  ZnDbObjectId rdSoftOwnershipId() override { return translated(readId(), true); }
  ZnDbObjectId rdHardOwnershipId() override { return translated(readId(), true); }
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

  void wrBool(bool) override {}
  void wrInt8(std::int8_t) override {}
  void wrInt16(std::int16_t) override {}
  void wrInt32(std::int32_t) override {}
  void wrInt64(std::int64_t) override {}
  void wrDouble(double) override {}
  void wrString(const ZnString&) override {}
  void wrAtom(ZnAtom) override {}
  void wrBytes(const void*, size_t) override {}
  void wrSoftPointerId(ZnDbObjectId id) override { keep(softPointers, id); }
  void wrHardPointerId(ZnDbObjectId id) override { keep(hardPointers, id); }
  void wrSoftOwnershipId(ZnDbObjectId id) override { keep(softOwned, id); }
  void wrHardOwnershipId(ZnDbObjectId id) override { keep(hardOwned, id); }

  // It never gives anything back.
  bool rdBool() override { return false; }
  std::int8_t rdInt8() override { return 0; }
  std::int16_t rdInt16() override { return 0; }
  std::int32_t rdInt32() override { return 0; }
  std::int64_t rdInt64() override { return 0; }
  double rdDouble() override { return 0.0; }
  ZnString rdString() override { return {}; }
  ZnAtom rdAtom() override { return {}; }
  std::string rdBytes() override { return {}; }
  ZnDbObjectId rdSoftPointerId() override { return {}; }
  ZnDbObjectId rdHardPointerId() override { return {}; }
  ZnDbObjectId rdSoftOwnershipId() override { return {}; }
  ZnDbObjectId rdHardOwnershipId() override { return {}; }
  size_t remaining() const override { return 0; }

private:
  static void keep(std::vector<ZnDbObjectId>& list, ZnDbObjectId id) {
    if (!id.isNull()) list.push_back(id);
  }
};

// Filers in memory: an object's fields as bytes for undo, cloning and comparison, and the walk over its ids.
#pragma once

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "quorl/db/core/filer.h"

// Writes to and reads from a string of bytes. Ids and atoms stand in them as addresses, so the bytes are good
// within this process only. Undo and clones write whole drawings through it, so all that is called for each
// field is inlined.
class ZnDbMemoryFiler : public ZnDbFiler {
public:
  explicit ZnDbMemoryFiler(Kind kind, ZnDbDatabase* database = nullptr)
      : ZnDbFiler(this)
      , kind_(kind)
      , database_(database) {}

  Kind kind() const final { return kind_; }
  Quorl::ErrorStatus status() const final { return status_; }
  void setStatus(Quorl::ErrorStatus status) final { status_ = status; }
  ZnDbDatabase* database() const final { return database_; }

  std::string_view bytes() const { return {bytes_.data(), used_}; }
  std::string takeBytes();
  // Reads these bytes from the start; the copy goes into the memory that the filer has.
  void setBytes(std::string bytes);
  void copyBytes(std::string_view bytes);
  void rewind();
  // Forgets what was written and keeps the memory for what comes next.
  void clear();
  void reserve(size_t count) { bytes_.resize(count); }

  void writeBool(bool value) final { put(static_cast<std::int8_t>(value)); }
  void writeInt8(std::int8_t value) final { put(value); }
  void writeInt16(std::int16_t value) final { put(value); }
  void writeInt32(std::int32_t value) final { put(value); }
  void writeInt64(std::int64_t value) final { put(value); }
  void writeDouble(double value) final { put(value); }
  void writeString(const ZnString& value) final;
  void writeAtom(ZnAtom value) final { put(value.address()); }
  void writeBytes(const void* bytes, size_t count) final;
  void writeSoftPointerId(ZnDbObjectId id) final { put(id.slot()); }
  void writeHardPointerId(ZnDbObjectId id) final { put(id.slot()); }
  void writeSoftOwnershipId(ZnDbObjectId id) final { put(id.slot()); }
  void writeHardOwnershipId(ZnDbObjectId id) final { put(id.slot()); }

  bool readBool() final { return take<std::int8_t>() != 0; }
  std::int8_t readInt8() final { return take<std::int8_t>(); }
  std::int16_t readInt16() final { return take<std::int16_t>(); }
  std::int32_t readInt32() final { return take<std::int32_t>(); }
  std::int64_t readInt64() final { return take<std::int64_t>(); }
  double readDouble() final { return take<double>(); }
  ZnString readString() final;
  ZnAtom readAtom() final { return ZnAtom::fromAddress(take<const ZnAtom::Entry*>()); }
  std::string readBytes() final;
  ZnDbObjectId readSoftPointerId() final { return translated(takeId(), false); }
  ZnDbObjectId readHardPointerId() final { return translated(takeId(), false); }
  ZnDbObjectId readSoftOwnershipId() final { return translated(takeId(), true); }
  ZnDbObjectId readHardOwnershipId() final { return translated(takeId(), true); }
  size_t remaining() const final { return used_ - at_; }

  // As the base composes them, in one piece.
  void writePoint3d(const ZnGePoint3d& p) { put(p); }
  void writeVector3d(const ZnGeVector3d& v) { put(v); }
  ZnGePoint3d readPoint3d() { return take<ZnGePoint3d>(); }
  ZnGeVector3d readVector3d() { return take<ZnGeVector3d>(); }
  void writeId(ZnReferenceKind, ZnDbObjectId id) { put(id.slot()); }
  ZnDbObjectId readId(ZnReferenceKind kind) {
    return translated(takeId(), kind == ZnReferenceKind::kSoftOwner || kind == ZnReferenceKind::kHardOwner);
  }

protected:
  // What an id that is read becomes; the base leaves it as it is.
  virtual ZnDbObjectId translated(ZnDbObjectId id, bool /*owned*/) const { return id; }

private:
  ZnDbObjectId takeId() { return ZnDbObjectId(take<ZnDbSlot*>()); }
  // Of a size that the compiler knows, so that it is a store and little more.
  template<class T> void put(const T& value) {
    if (bytes_.size() - used_ < sizeof(T)) grow(sizeof(T));
    std::memcpy(bytes_.data() + used_, &value, sizeof(T));
    used_ += sizeof(T);
  }
  void putBytes(const void* bytes, size_t count);
  void grow(size_t count); // makes room for so many bytes more
  template<class T> T take() {
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
  static_assert(sizeof(ZnGePoint3d) == 3 * sizeof(double) && sizeof(ZnGeVector3d) == 3 * sizeof(double));

  Kind kind_;
  ZnDbDatabase* database_;
  Quorl::ErrorStatus status_ = Quorl::eOk;
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

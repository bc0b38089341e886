// The binary filer of files: writes an object's fields into a record, and reads them from one.
#pragma once

#include "quorl/db/core/filer.h"
#include "quorl/file/byte_codec.h"
#include "quorl/file/object_record.h"

// The record belongs to the caller and outlives the filer. Writing appends; reading starts at its beginning
// and takes nothing out of it.
class ZnDbRecordFiler : public ZnDbFiler {
public:
  explicit ZnDbRecordFiler(ZnDbObjectRecord& record, ZnDbDatabase* database = nullptr);

  Kind kind() const override { return kFile; }
  Quorl::ErrorStatus status() const override { return status_; }
  void setStatus(Quorl::ErrorStatus status) override { status_ = status; }
  ZnDbDatabase* database() const override { return database_; }

  // Starts reading the record anew, with whatever it holds by now.
  void restart();
  // True when all was read.
  bool atEnd() const;
  // What was not read yet, as a record of its own.
  void takeRest(ZnDbObjectRecord& rest) const;

  void writeBool(bool value) override { writer_.put<std::uint8_t>(value ? 1 : 0); }
  void writeInt8(std::int8_t value) override { writer_.put(value); }
  void writeInt16(std::int16_t value) override { writer_.put(value); }
  void writeInt32(std::int32_t value) override { writer_.put(value); }
  void writeInt64(std::int64_t value) override { writer_.put(value); }
  void writeDouble(double value) override { writer_.put(value); }
  void writeString(const ZnString& value) override { writer_.putText(value.utf8()); }
  void writeAtom(ZnAtom value) override { record_.atoms.push_back(value); }
  void writeBytes(const void* bytes, size_t count) override;
  void writeSoftPointerId(ZnDbObjectId id) override { refer(ZnReferenceKind::kSoftPointer, id); }
  void writeHardPointerId(ZnDbObjectId id) override { refer(ZnReferenceKind::kHardPointer, id); }
  void writeSoftOwnershipId(ZnDbObjectId id) override { refer(ZnReferenceKind::kSoftOwner, id); }
  void writeHardOwnershipId(ZnDbObjectId id) override { refer(ZnReferenceKind::kHardOwner, id); }

  bool readBool() override { return take<std::uint8_t>() != 0; }
  std::int8_t readInt8() override { return take<std::int8_t>(); }
  std::int16_t readInt16() override { return take<std::int16_t>(); }
  std::int32_t readInt32() override { return take<std::int32_t>(); }
  std::int64_t readInt64() override { return take<std::int64_t>(); }
  double readDouble() override { return take<double>(); }
  ZnString readString() override;
  ZnAtom readAtom() override;
  std::string readBytes() override;
  ZnDbObjectId readSoftPointerId() override { return referred(ZnReferenceKind::kSoftPointer); }
  ZnDbObjectId readHardPointerId() override { return referred(ZnReferenceKind::kHardPointer); }
  ZnDbObjectId readSoftOwnershipId() override { return referred(ZnReferenceKind::kSoftOwner); }
  ZnDbObjectId readHardOwnershipId() override { return referred(ZnReferenceKind::kHardOwner); }
  // An id or name that is left counts as eight bytes, so that a list of them passes the test of its count.
  size_t remaining() const override;

private:
  void refer(ZnReferenceKind kind, ZnDbObjectId id) { record_.references.push_back({kind, id}); }
  ZnDbObjectId referred(ZnReferenceKind kind);
  // Gives the value through, or notes that the bytes ended before it.
  template<class T> T checked(T value) {
    if (!reader_.isGood()) status_ = Quorl::eFilerError;
    return value;
  }
  template<class T> T take() {
    if (status_ != Quorl::eOk) return {};
    return checked(reader_.take<T>());
  }

  ZnDbObjectRecord& record_;
  ZnDbDatabase* database_;
  Quorl::ErrorStatus status_ = Quorl::eOk;
  ZnByteWriter writer_;
  ZnByteReader reader_;
  size_t nextReference_ = 0, nextAtom_ = 0;
};

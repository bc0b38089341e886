#include "quorl/file/record_filer.h"

ZnDbRecordFiler::ZnDbRecordFiler(ZnDbObjectRecord& record, ZnDbDatabase* database)
    : record_(record)
    , database_(database)
    , writer_(record.bytes)
    , reader_(record.bytes) {}

void ZnDbRecordFiler::restart() {
  status_ = Quorl::eOk;
  reader_ = ZnByteReader(record_.bytes);
  nextReference_ = nextAtom_ = 0;
}

bool ZnDbRecordFiler::atEnd() const {
  return reader_.atEnd() && nextReference_ == record_.references.size() && nextAtom_ == record_.atoms.size();
}

void ZnDbRecordFiler::takeRest(ZnDbObjectRecord& rest) const {
  rest.bytes.assign(record_.bytes, reader_.position());
  rest.references.assign(record_.references.begin() + static_cast<std::ptrdiff_t>(nextReference_),
                         record_.references.end());
  rest.atoms.assign(record_.atoms.begin() + static_cast<std::ptrdiff_t>(nextAtom_), record_.atoms.end());
}

void ZnDbRecordFiler::writeBytes(const void* bytes, size_t count) {
  writer_.putText({static_cast<const char*>(bytes), count});
}

ZnString ZnDbRecordFiler::readString() {
  if (status_ != Quorl::eOk) return {};
  return ZnString::fromUtf8(checked(reader_.takeText()));
}

std::string ZnDbRecordFiler::readBytes() {
  if (status_ != Quorl::eOk) return {};
  return std::string(checked(reader_.takeText()));
}

ZnAtom ZnDbRecordFiler::readAtom() {
  if (status_ == Quorl::eOk && nextAtom_ == record_.atoms.size()) status_ = Quorl::eFilerError;
  return status_ == Quorl::eOk ? record_.atoms[nextAtom_++] : ZnAtom();
}

// A reference of another kind than the fields say means that the two lists are out of step.
ZnDbObjectId ZnDbRecordFiler::referred(ZnReferenceKind kind) {
  if (status_ != Quorl::eOk) return {};
  if (nextReference_ == record_.references.size()) {
    status_ = Quorl::eFilerError;
    return {};
  }
  const ZnDbReference& reference = record_.references[nextReference_++];
  if (reference.kind != kind) status_ = Quorl::eFileDamaged;
  return status_ == Quorl::eOk ? reference.id : ZnDbObjectId();
}

size_t ZnDbRecordFiler::remaining() const {
  constexpr size_t kBytesEach = 8;
  const size_t listed = (record_.references.size() - nextReference_) + (record_.atoms.size() - nextAtom_);
  return reader_.remaining() + kBytesEach * listed;
}

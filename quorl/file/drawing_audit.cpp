#include "quorl/file/drawing_audit.h"

#include <unordered_map>

#include "quorl/db/core/database.h"
#include "quorl/db/entity/entity.h"
#include "quorl/db/table/block_table.h"
#include "quorl/file/file_error.h"
#include "quorl/file/proxy_conversion.h"
#include "quorl/file/record_filer.h"

namespace {

ZnAuditFinding finding(ZnDbObjectId id, std::string reason) {
  return {id.handle(), id.objectClass()->name().utf8(), std::move(reason)};
}

// Objects tell their faults after a name of their own, which a finding has already.
std::string withoutLabel(const ZnString& fault) {
  const std::string text = fault.utf8();
  const size_t colon = text.find(": ");
  return colon == std::string::npos ? text : text.substr(colon + 2);
}

void auditObject(ZnDbObjectId id, bool fix, std::vector<ZnAuditFinding>& findings) {
  std::vector<ZnString> faults;
  if (!fix) {
    id.slot()->object->audit(faults, false);
  } else {
    ZnDbHolder<ZnDbObject> object;
    if (object.openForWrite(id, false, true) == Quorl::eOk) object->audit(faults, true);
  }
  for (const ZnString& fault : faults) findings.push_back(finding(id, withoutLabel(fault)));
}

// Who names whom as its own. What proxies name is in their records only, so records are asked.
class Ownership {
public:
  explicit Ownership(const ZnDbDatabase& database) {
    for (const ZnDbObjectId id : database.allObjectIds())
      if (!id.isErased()) noteOwned(id);
    for (const ZnDbObjectId root :
         {database.blockTableId(), database.layerTableId(), database.linetypeTableId(),
          database.dimStyleTableId(), database.namedObjectsDictionaryId()})
      ownerOf_[root] = {};
  }

  // Empty for an object that is where it belongs.
  const char* faultOf(ZnDbObjectId id) const {
    const ZnDbObjectId owner = id.slot()->object->ownerId();
    const auto named = ownerOf_.find(id);
    if (named != ownerOf_.end() && named->second == owner) return "";
    if (owner.isErased()) return "its owner is missing";
    return named == ownerOf_.end() ? "its owner does not know of it" : "another object than its owner has it";
  }

private:
  void noteOwned(ZnDbObjectId id) {
    ZnDbObjectRecord record;
    ZnDbRecordFiler filer(record);
    std::string_view text;
    if (zndbWriteRecord(*id.slot()->object, record, filer, text) != Quorl::eOk) return;
    for (const auto& [kind, target] : record.references)
      if (kind == ZnReferenceKind::kSoftOwner || kind == ZnReferenceKind::kHardOwner)
        ownerOf_.emplace(target, id);
  }
  std::unordered_map<ZnDbObjectId, ZnDbObjectId> ownerOf_;
};

// Where a container can take the object in: the block that it says it is in, the table of its class. Null for
// what nobody could find there.
ZnDbObjectId homeOf(const ZnDbDatabase& database, ZnDbObjectId id) {
  const ZnDbObjectId owner = id.slot()->object->ownerId();
  if (id.isDerivedFrom(ZnDbEntity::desc()))
    return !owner.isErased() && owner.isDerivedFrom(ZnDbBlockTableRecord::desc()) ? owner : ZnDbObjectId();
  for (const ZnDbObjectId table : {database.blockTableId(), database.layerTableId(),
                                   database.linetypeTableId(), database.dimStyleTableId()})
    if (id.isDerivedFrom(static_cast<ZnDbSymbolTable*>(table.slot()->object)->recordClass())) return table;
  return {};
}

void takeHome(ZnDbDatabase& database, ZnDbObjectId id) {
  ZnDbHolder<ZnDbObject> object;
  if (object.openForWrite(id, false, true) != Quorl::eOk) return;
  const ZnDbObjectId home = homeOf(database, id);
  ZnDbHolder<ZnDbObject> container;
  if (home.isNull() || container.openForWrite(home, false, true) != Quorl::eOk) {
    object->erase();
    return;
  }
  object->assertWriteEnabled();
  object->setOwnerId(home);
  container->assertWriteEnabled();
  container->memberAdded(id);
}

} // namespace

std::string ZnAuditFinding::text() const { return Quorl::objectPlace(object, className) + ": " + reason; }

namespace {

void auditOnce(ZnDbDatabase& database, bool fix, std::vector<ZnAuditFinding>& findings) {
  std::vector<ZnDbObjectId> astray;
  const Ownership ownership(database);
  for (const ZnDbObjectId id : database.allObjectIds()) {
    if (id.isErased()) continue;
    auditObject(id, fix, findings);
    const char* fault = ownership.faultOf(id);
    if (*fault == '\0') continue;
    findings.push_back(finding(id, fault));
    astray.push_back(id);
  }
  if (fix)
    for (const ZnDbObjectId id : astray)
      if (!id.isErased()) takeHome(database, id);
}

} // namespace

std::vector<ZnAuditFinding> zndbAuditDrawing(ZnDbDatabase& database, bool fix) {
  // What was erased may have owned something; ownership is not as deep as this.
  constexpr int kMostRounds = 20;
  std::vector<ZnAuditFinding> findings;
  size_t before = 0;
  auditOnce(database, fix, findings);
  for (int round = 1; fix && round < kMostRounds && findings.size() > before; ++round) {
    before = findings.size();
    auditOnce(database, true, findings);
  }
  return findings;
}

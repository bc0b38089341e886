#include "quorl/edit/explode.h"

#include <memory>
#include <vector>

#include "quorl/assoc/dim_assoc.h"
#include "quorl/db/core/database.h"
#include "quorl/db/core/id_mapping.h"
#include "quorl/db/core/open.h"
#include "quorl/db/core/watch_link.h"
#include "quorl/db/entity/block_reference.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/external_link.h"

using Quorl::ErrorStatus;
using Ids = ZnArray<ZnDbObjectId>;

namespace {

ErrorStatus append(ZnDbObjectId blockId, std::unique_ptr<ZnDbEntity> entity, Ids& made) {
  ZnDbHolder<ZnDbEntity> owner(entity.release());
  ZnDbHolder<ZnDbBlockTableRecord> block;
  if (const ErrorStatus status = block.openForWrite(blockId); status != Quorl::eOk) return status;
  ZnDbObjectId id;
  const ErrorStatus status = block->appendZnDbEntity(id, owner.object());
  if (status == Quorl::eOk) made.append(id);
  return status;
}

ErrorStatus erase(ZnDbObjectId id) {
  ZnDbHolder<ZnDbEntity> entity;
  const ErrorStatus status = entity.openForWrite(id);
  return status == Quorl::eOk ? entity->erase() : status;
}

ErrorStatus explodePieces(ZnDbObjectId id, Ids& made) {
  std::vector<std::unique_ptr<ZnDbEntity>> pieces;
  ZnDbObjectId block;
  {
    const ZnDbHolder<ZnDbEntity> entity(id);
    if (!entity.isOpen()) return entity.status();
    block = entity->blockId();
    if (const ErrorStatus status = entity->explode(pieces); status != Quorl::eOk) return status;
    for (const auto& piece : pieces) piece->setPropertiesFrom(entity.object());
  }
  for (auto& piece : pieces)
    if (const ErrorStatus status = append(block, std::move(piece), made); status != Quorl::eOk) return status;
  return erase(id);
}

// A block reference whose content takes its place, told in the order in which that happens.
class BlockExplosion {
public:
  BlockExplosion(const ZnDbBlockReference& reference, Ids& made)
      : reference_(reference.objectId())
      , space_(reference.blockId())
      , transform_(reference.blockTransform())
      , mapping_(ZnDb::kExplodeContext, reference.database(), reference.database())
      , made_(made) {}

  ErrorStatus run(ZnDbObjectId blockId) {
    Ids content;
    if (const ErrorStatus status = contentOf(blockId, content); status != Quorl::eOk) return status;
    ErrorStatus status = reference_.database()->deepCloneObjects(content, space_, mapping_);
    for (const ZnDbObjectId id : content)
      if (status == Quorl::eOk) status = place(cloneOf(id));
    if (status != Quorl::eOk) return status;
    leadDimensions();
    return erase(reference_);
  }

private:
  static ErrorStatus contentOf(ZnDbObjectId blockId, Ids& content) {
    const ZnDbHolder<ZnDbBlockTableRecord> block(blockId);
    if (!block.isOpen()) return block.status();
    if (ZnDbExternalLink::isShownBy(*block)) return Quorl::eExternalDrawing;
    for (const ZnDbObjectId id : block->entityIds())
      if (!id.isErased()) content.append(id);
    return content.isEmpty() ? Quorl::eNothingToDo : Quorl::eOk;
  }

  ZnDbObjectId cloneOf(ZnDbObjectId id) const {
    ZnDbIdPair pair(id);
    return mapping_.compute(pair) && pair.isCloned() ? pair.value() : ZnDbObjectId();
  }

  ErrorStatus place(ZnDbObjectId id) {
    ZnDbHolder<ZnDbEntity> clone;
    if (const ErrorStatus status = clone.openForWrite(id, false, true); status != Quorl::eOk) return status;
    const ZnDbHolder<ZnDbBlockReference> reference(reference_);
    if (!reference.isOpen()) return reference.status();
    reference->resolveByBlock(*clone);
    if (clone->transformBy(transform_) == Quorl::eOk) {
      made_.append(id);
      return Quorl::eOk;
    }
    std::vector<std::unique_ptr<ZnDbEntity>> images;
    if (const ErrorStatus status = zndbAppendImages(*clone, transform_, images); status != Quorl::eOk)
      return status;
    for (auto& image : images)
      if (const ErrorStatus status = append(space_, std::move(image), made_); status != Quorl::eOk)
        return status;
    return clone->erase();
  }

  // Dimensions that measured through the reference measure what took its place.
  void leadDimensions() const {
    Ids associations;
    const ZnDbWatchLink* const first = reference_.slot()->watchers;
    for (const ZnDbWatchLink* link = first; link; link = link->next == first ? nullptr : link->next)
      if (link->watcher.isDerivedFrom(ZnDbDimAssoc::desc()) && !associations.contains(link->watcher))
        associations.append(link->watcher);
    for (const ZnDbObjectId id : associations) leadDimension(id);
  }

  void leadDimension(ZnDbObjectId id) const {
    ZnDbHolder<ZnDbDimAssoc> association;
    if (association.openForWrite(id, false, true) != Quorl::eOk) return;
    std::vector<ZnDbDimAssoc::Reference> references = association->references();
    for (ZnDbDimAssoc::Reference& reference : references) {
      Ids path;
      if (reference.path.getFullPath(path) != Quorl::eOk) continue;
      const int at = path.find(reference_);
      if (at < 0 || at + 1 >= path.length() || cloneOf(path[at + 1]).isErased()) continue;
      path[at + 1] = cloneOf(path[at + 1]);
      path.removeAt(at);
      reference.path.setFullPath(path);
    }
    association->setReferences(references);
  }

  ZnDbObjectId reference_, space_;
  ZnGeMatrix3d transform_;
  ZnDbIdMapping mapping_;
  Ids& made_;
};

} // namespace

ErrorStatus zndbExplode(ZnDbObjectId entity, Ids& made) {
  if (!entity.isDerivedFrom(ZnDbBlockReference::desc())) return explodePieces(entity, made);
  ZnDbHolder<ZnDbBlockReference> reference;
  if (const ErrorStatus status = reference.openForWrite(entity); status != Quorl::eOk) return status;
  const ZnDbObjectId block = reference->blockTableRecord();
  BlockExplosion explosion(*reference, made);
  reference.close();
  return explosion.run(block);
}

#include "quorl/db/entity/shown_content.h"

#include <limits>
#include <unordered_map>

#include "quorl/db/entity/block_reference.h"
#include "quorl/db/table/block_table.h"

namespace {

std::uint64_t sum(std::uint64_t a, std::uint64_t b) {
  return a > std::numeric_limits<std::uint64_t>::max() - b ? std::numeric_limits<std::uint64_t>::max()
                                                           : a + b;
}

// What a block comes to, worked out once a block: of(entity) for its own entities, shown(reference, result)
// for those that show another one.
template<class Result, class Rules> class PerBlock {
public:
  const Result& of(ZnDbObjectId block) {
    const auto [known, isNew] = known_.try_emplace(block);
    Result& result = known->second; // stays in its place whatever comes into the table
    if (!isNew) return result;
    const ZnDbHolder<ZnDbBlockTableRecord> record(block);
    if (!record.isOpen()) return result;
    for (const ZnDbObjectId id : record->entityIds()) {
      const auto* entity = id.isErased() ? nullptr : ZnDbEntity::cast(id.slot()->object);
      if (!entity || entity->visibility() != ZnDb::kVisible) continue;
      if (const auto* reference = ZnDbBlockReference::cast(entity))
        Rules::addShown(result, *reference, of(reference->blockTableRecord()));
      else
        Rules::addEntity(result, *entity);
    }
    return result;
  }

private:
  std::unordered_map<ZnDbObjectId, Result> known_;
};

struct Counting {
  static void addEntity(std::uint64_t& count, const ZnDbEntity&) { count = sum(count, 1); }
  static void addShown(std::uint64_t& count, const ZnDbBlockReference&, std::uint64_t shown) {
    count = sum(count, shown);
  }
};

struct Boxing {
  static void addEntity(ZnGeBoundBlock3d& box, const ZnDbEntity& entity) {
    ZnGeBoundBlock3d own;
    if (entity.getGeomExtents(own) == Quorl::eOk) box.addBox(own);
  }
  static void addShown(ZnGeBoundBlock3d& box, const ZnDbBlockReference& reference, ZnGeBoundBlock3d shown) {
    if (!shown.isEmpty()) box.addBox(shown.transformBy(reference.blockTransform()));
  }
};

} // namespace

std::uint64_t zndbShownCount(ZnDbObjectId block) { return PerBlock<std::uint64_t, Counting>().of(block); }

ZnGeBoundBlock3d zndbShownBox(ZnDbObjectId block) { return PerBlock<ZnGeBoundBlock3d, Boxing>().of(block); }

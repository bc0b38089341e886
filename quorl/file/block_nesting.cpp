#include "quorl/file/block_nesting.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "quorl/db/entity/block_reference.h"
#include "quorl/db/table/block_table.h"
#include "quorl/file/handle_index.h"

namespace {

constexpr int kDeepest = ZnDbBlockTableRecord::kDeepestNesting;
constexpr auto kMostShown = static_cast<double>(Quorl::kMostShownInFile);

// A block on the way down, and how far its members have been gone through.
struct Step {
  const ZnDbBlockTableRecord* block;
  size_t next = 0;
};

struct Measure {
  bool isOpen = true; // on the way down now
  int depth = 1;
  double shown = 0.0; // entities, those of nested blocks as often as they are repeated
};

const ZnDbBlockTableRecord* blockAt(ZnDbObjectId id) {
  return id.isValid() ? ZnDbBlockTableRecord::cast(id.slot()->object) : nullptr;
}

const ZnDbBlockTableRecord* blockShownBy(ZnDbObjectId id) {
  const auto* reference = id.isValid() ? ZnDbBlockReference::cast(id.slot()->object) : nullptr;
  return reference ? blockAt(reference->blockTableRecord()) : nullptr;
}

// Goes down without recursion: the depth is what is in question.
class Nesting {
public:
  bool measure(const ZnDbBlockTableRecord& top, ZnFileError& error);

private:
  bool enter(const ZnDbBlockTableRecord& block, ZnFileError& error);
  bool leave(ZnFileError& error);

  std::unordered_map<const ZnDbBlockTableRecord*, Measure> known_;
  std::vector<Step> way_;
};

bool fail(const ZnDbBlockTableRecord& block, const char* what, const std::string& expected,
          ZnFileError& error) {
  error.object = block.handle();
  return error.fail(Quorl::eFileDamaged, Quorl::objectPlace(block.handle(), block.isA()->name().utf8()),
                    "block \"" + block.name().utf8() + "\" " + what, expected);
}

bool Nesting::enter(const ZnDbBlockTableRecord& block, ZnFileError& error) {
  const auto [place, isNew] = known_.try_emplace(&block);
  if (isNew)
    way_.push_back({&block});
  else if (place->second.isOpen)
    return fail(block, "contains itself", "blocks that end somewhere", error);
  return true;
}

// All members are known: adds them up, and goes one step back.
bool Nesting::leave(ZnFileError& error) {
  const ZnDbBlockTableRecord& block = *way_.back().block;
  Measure& measure = known_.at(&block);
  for (const ZnDbObjectId id : block.entityIds()) {
    measure.shown += 1.0;
    const ZnDbBlockTableRecord* shown = blockShownBy(id);
    if (!shown) continue;
    const Measure& inner = known_.at(shown);
    measure.depth = std::max(measure.depth, inner.depth + 1);
    measure.shown += inner.shown;
  }
  measure.isOpen = false;
  way_.pop_back();
  if (measure.depth > kDeepest)
    return fail(block, "holds too many blocks, one in the other",
                std::to_string(kDeepest) + " levels at most", error);
  return measure.shown <= kMostShown ||
         fail(block, "repeats its content beyond all measure", "a hundred million entities at most", error);
}

bool Nesting::measure(const ZnDbBlockTableRecord& top, ZnFileError& error) {
  if (!enter(top, error)) return false;
  while (!way_.empty()) {
    Step& step = way_.back();
    const std::vector<ZnDbObjectId>& members = step.block->entityIds();
    if (step.next == members.size()) {
      if (!leave(error)) return false;
      continue;
    }
    const ZnDbBlockTableRecord* shown = blockShownBy(members[step.next++]);
    if (shown && !enter(*shown, error)) return false;
  }
  return true;
}

} // namespace

bool Quorl::checkBlockNesting(const ZnHandleIndex& index, ZnFileError& error) {
  Nesting nesting;
  for (size_t i = 0; i < index.size(); ++i) {
    const ZnDbBlockTableRecord* block = blockAt(index.at(i));
    if (block && !nesting.measure(*block, error)) return false;
  }
  return true;
}

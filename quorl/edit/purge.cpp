#include "quorl/edit/purge.h"

#include "quorl/db/core/open.h"
#include "quorl/db/table/block_table.h"
#include "quorl/db/table/dim_style_table.h"
#include "quorl/db/table/external_link.h"
#include "quorl/db/table/layer_table.h"
#include "quorl/db/table/linetype_table.h"

namespace {

// Blocks first, then what their entities refer to.
using Tables = ZnDbObjectId (*)(const ZnDbDatabase&);
constexpr Tables kTables[] = {
    [](const ZnDbDatabase& drawing) { return drawing.blockTableId(); },
    [](const ZnDbDatabase& drawing) { return drawing.dimStyleTableId(); },
    [](const ZnDbDatabase& drawing) { return drawing.layerTableId(); },
    [](const ZnDbDatabase& drawing) { return drawing.linetypeTableId(); },
};

bool isSpared(ZnDbObjectId id) {
  const ZnDbHolder<ZnDbBlockTableRecord> block(id);
  return block.isOpen() && (block->isLayout() || ZnDbExternalLink::isShownBy(*block));
}

// Whether the record refuses is its own affair: it knows who needs it.
bool eraseUnneeded(ZnDbObjectId id) {
  if (id.isErased() || id.slot()->users > 0 || isSpared(id)) return false;
  ZnDbHolder<ZnDbSymbolTableRecord> record;
  return record.openForWrite(id) == Quorl::eOk && record->erase() == Quorl::eOk;
}

} // namespace

ZnArray<ZnDbObjectId> zndbPurge(ZnDbDatabase& drawing, const ZnRxClass* recordClass) {
  ZnArray<ZnDbObjectId> purged;
  // What goes may have been the last to need another; later records are often made of earlier ones.
  for (int before = -1; before != purged.length();) {
    before = purged.length();
    for (const Tables table : kTables) {
      const ZnDbHolder<ZnDbSymbolTable> opened(table(drawing));
      if (!opened.isOpen() || (recordClass && opened->recordClass() != recordClass)) continue;
      const std::vector<ZnDbObjectId> records = opened->recordIds();
      for (auto id = records.rbegin(); id != records.rend(); ++id)
        if (eraseUnneeded(*id)) purged.append(*id);
    }
  }
  return purged;
}

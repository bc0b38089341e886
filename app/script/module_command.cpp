#include "app/script/module_command.h"

namespace app {

std::string handleOf(ZnDbObjectId object) { return handleText(object.handle()).utf8(); }

exchange::Edge edgeValue(const ZnDbFullSubentPath& path) {
  exchange::Edge edge;
  for (const ZnDbObjectId id : path.objectIds()) edge.path.push_back(handleOf(id));
  edge.index = static_cast<int>(path.subentId().index());
  return edge;
}

exchange::Point pointValue(const ZnGePoint3d& point) { return {point.x, point.y, point.z}; }

void noteCreated(ScriptSession& session, const std::vector<std::string>& handles) {
  for (const std::string& handle : handles) {
    ZnDbObjectId id;
    const ZnDbHandle number = ZnString::fromUtf8(handle).asZnDbHandle();
    if (session.database().getZnDbObjectId(id, false, number) == Quorl::eOk) session.noteMade(id);
  }
}

} // namespace app

#include "companion/association_commands.h"

#include "companion/center_kind.h"
#include "companion/command_arguments.h"
#include "companion/object_naming.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

ErrorStatus reassociate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::CenterWish wish;
  if (const ErrorStatus status = begin(context, database, wish); status != Quorl::eOk) return status;
  std::vector<ZnDbObjectId> objects;
  if (const ErrorStatus status = centerObjectsOf(context, *database, wish.objects, objects);
      status != Quorl::eOk)
    return status;
  if (objects.size() != 1) return context.fail(Quorl::eInvalidInput, L"one center object is wanted");
  const CenterKind* kind = centerKindOf(ZnDbTorviObjectWrapper::getCenterType(objects.front()));
  if (!kind) return context.fail(Quorl::eWrongWrapperKind, L"an object of this kind can't be tied to edges");
  return kind->reassociate(context, *database, wish, objects.front());
}

ErrorStatus disassociate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::CenterWish wish;
  if (const ErrorStatus status = begin(context, database, wish); status != Quorl::eOk) return status;
  std::vector<ZnDbObjectId> objects;
  if (const ErrorStatus status = centerObjectsOf(context, *database, wish.objects, objects);
      status != Quorl::eOk)
    return status;
  ZnDbTransaction transaction(*database);
  for (const ZnDbObjectId id : objects) {
    ZnDbTorviObjectWrapper wrapper(id);
    ErrorStatus status = wrapper.breakAssociativity();
    if (status == Quorl::eOk) status = wrapper.setIsExplicitlyDeassociatived(true);
    if (status == Quorl::eOk) status = ZnTorviLyxUtils::explicitlyEvaluateActionBody(wrapper.actionBody());
    if (status != Quorl::eOk)
      return context.fail(status, ZnString(L"#") + handleText(id.handle()) + L" could not be let go (" +
                                      statusText(status) + L")");
  }
  return transaction.end();
}

} // namespace companion

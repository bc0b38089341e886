#include "companion/association_commands.h"

#include "companion/center_kind.h"
#include "companion/command_arguments.h"
#include "companion/object_naming.h"
#include "torvi/dbutils/lyx_utils.h"

using Quorl::ErrorStatus;

namespace companion {

namespace {

// What both commands need first: the drawing, the wish, and the center objects that it names.
ErrorStatus beginWithObjects(ZnRxCommandContext& context, ZnDbDatabase*& database, exchange::CenterWish& wish,
                             std::vector<ZnDbObjectId>& objects) {
  const ErrorStatus status = begin(context, database, wish);
  return status == Quorl::eOk ? centerObjectsOf(context, *database, wish.objects, objects) : status;
}

} // namespace

ErrorStatus reassociate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::CenterWish wish;
  std::vector<ZnDbObjectId> objects;
  if (const ErrorStatus status = beginWithObjects(context, database, wish, objects); status != Quorl::eOk)
    return status;
  if (objects.size() != 1) return context.fail(Quorl::eInvalidInput, L"one center object is wanted");
  const CenterKind* kind = centerKindOf(ZnDbTorviObjectWrapper::getCenterType(objects.front()));
  if (!kind) return context.fail(Quorl::eWrongWrapperKind, L"an object of this kind can't be tied to edges");
  return kind->reassociate(context, *database, wish, objects.front());
}

ErrorStatus disassociate(ZnRxCommandContext& context) {
  ZnDbDatabase* database = nullptr;
  exchange::CenterWish wish;
  std::vector<ZnDbObjectId> objects;
  if (const ErrorStatus status = beginWithObjects(context, database, wish, objects); status != Quorl::eOk)
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

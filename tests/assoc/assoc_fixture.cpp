#include "assoc/assoc_fixture.h"

#include "quorl/assoc/dependency.h"
#include "quorl/assoc/evaluation_pointer.h"
#include "quorl/assoc/manager.h"
#include "quorl/db/core/id_mapping.h"

using Quorl::ErrorStatus;

ZNRX_DEFINE_DRAWING_CLASS(SumBody, ZnDbAssocActionBody, L"SUMBODY")

std::vector<ZnDbObjectId> SumBody::evaluated;
ZnDbObjectId SumBody::failing;
std::vector<ZnDbObjectId> SumBody::postProcessed;
ZnDbObjectId SumBody::namingData;

ZnDbObjectId SumBody::outputId() const {
  ZnArray<ZnDbObjectId> writes;
  getDependencies(false, true, writes);
  if (writes.isEmpty()) return {};
  const ZnDbHolder<ZnDbAssocDependency> dependency(writes[0]);
  return dependency.isOpen() ? dependency->dependentOnObject() : ZnDbObjectId();
}

double SumBody::wantedRadius() const {
  double sum = 0.0;
  ZnArray<ZnDbObjectId> reads;
  getDependencies(true, false, reads);
  for (const ZnDbObjectId id : reads) {
    const ZnDbHolder<ZnDbAssocDependency> dependency(id);
    const ZnDbHolder<ZnDbCircle> input(dependency->compoundObject().leafId());
    if (input.isOpen() && !dependency->isWriteDependency()) sum += input->radius();
  }
  return 0.5 * sum + 1.0;
}

void SumBody::evaluateOverride() {
  evaluated.push_back(objectId());
  evaluateDependencies();
  if (objectId() == failing) {
    setStatus(kFailedToEvaluateAssocStatus);
    return;
  }
  ZnDbEvalPointer<ZnDbCircle> output(outputId(), true);
  if (!output.isOpen()) {
    setStatus(kErasedAssocStatus);
    return;
  }
  if (output->radius() != wantedRadius()) output->setRadius(wantedRadius());
  setValueParam(L"Radius", ZnDbEvalVariant(output->radius()));
}

ErrorStatus SumBody::addMoreObjectsToDeepCloneOverride(ZnDbIdMapping& mapping,
                                                       ZnArray<ZnDbObjectId>& more) const {
  ZnDbIdPair pair(outputId());
  if (mapping.compute(pair)) more.append(parentAction());
  return Quorl::eOk;
}

ErrorStatus SumBody::collectPersSubentNamingDataOverride(ZnArray<ZnDbObjectId>& data) const {
  if (!namingData.isNull()) data.append(namingData);
  return Quorl::eOk;
}

ErrorStatus SumBody::clonePersSubentNamingDataOverride(ZnDbDatabase*, ZnDbIdMapping& mapping) {
  ZnDbIdPair pair(namingData);
  ZnDbHolder<ZnDbCircle> data;
  if (mapping.compute(pair) && data.openForWrite(pair.value()) == Quorl::eOk)
    data->setRadius(10.0 * data->radius());
  return Quorl::eOk;
}

ErrorStatus SumBody::postProcessAfterDeepCloneOverride(ZnDbIdMapping& mapping) {
  ZnDbIdPair pair(outputId());
  EXPECT_TRUE(mapping.compute(pair));
  postProcessed.push_back(objectId());
  return Quorl::eOk;
}

AssocTest::AssocTest() {
  SumBody::evaluated.clear();
  SumBody::postProcessed.clear();
  SumBody::failing.setNull();
}

AssocTest::~AssocTest() {
  for (const ZnString& fault : linkFaults(db)) ADD_FAILURE() << fault.utf8();
}

ZnDbObjectId AssocTest::addBody() {
  ZnDbObjectId actionId, bodyId;
  EXPECT_EQ(ZnDbAssocActionBody::createActionAndActionBodyAndPostToDatabase(
                SumBody::desc(), db.modelSpaceId(), actionId, bodyId),
            Quorl::eOk);
  EXPECT_EQ(ZnDbAssocActionBody::parentAction(bodyId), actionId);
  return bodyId;
}

ZnDbObjectId AssocTest::addSum(const std::vector<ZnDbObjectId>& inputs, ZnDbObjectId output,
                               bool readsOutput) {
  const ZnDbObjectId bodyId = addBody();
  addDependency(bodyId, ZnDbCompoundObjectId(output), readsOutput, true);
  for (const ZnDbObjectId input : inputs) addDependency(bodyId, ZnDbCompoundObjectId(input), true, false);
  setStatus(bodyId, kChangedDirectlyAssocStatus);
  return bodyId;
}

ZnDbObjectId AssocTest::addDependency(ZnDbObjectId bodyId, const ZnDbCompoundObjectId& on, bool isRead,
                                      bool isWrite) {
  ZnDbHolder<ZnDbAssocActionBody> body;
  EXPECT_EQ(body.openForWrite(bodyId), Quorl::eOk);
  ZnDbObjectId id;
  EXPECT_EQ(body->addDependency(nullptr, nullptr, isRead, isWrite, 0, id), Quorl::eOk);
  ZnDbHolder<ZnDbAssocDependency> dependency;
  EXPECT_EQ(dependency.openForWrite(id), Quorl::eOk);
  EXPECT_EQ(dependency->attachToObject(on), Quorl::eOk);
  return id;
}

ZnDbAssocStatus AssocTest::statusOf(ZnDbObjectId bodyId) const {
  const ZnDbHolder<ZnDbAssocActionBody> body(bodyId);
  return body.isOpen() ? body->status() : kUnresolvedAssocStatus;
}

void AssocTest::setStatus(ZnDbObjectId bodyId, ZnDbAssocStatus status) {
  change<ZnDbAssocAction>(ZnDbAssocActionBody::parentAction(bodyId),
                          [=](ZnDbAssocAction& action) { action.setStatus(status, true, false); });
}

ErrorStatus AssocTest::evaluate(ZnDbAssocEvaluationCallback* callback) {
  return ZnDbAssocManager::evaluateTopLevelNetwork(&db, callback, 0);
}

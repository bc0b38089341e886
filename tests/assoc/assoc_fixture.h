// Circles whose radii follow other circles: the smallest network that shows what is evaluated, and when.
#pragma once

#include "assoc/check_links.h"
#include "quorl/assoc/action_body.h"
#include "quorl/assoc/network.h"
#include "support/host_drawing.h"

// Writes one circle: its radius becomes half the sum of the radii that it reads, plus 1, so that chains of
// any length keep to numbers that are exact to compare.
class SumBody : public ZnDbAssocActionBody {
  ZNRX_DECLARE_MEMBERS(SumBody)

public:
  static std::vector<ZnDbObjectId> evaluated; // bodies, in order of evaluation
  static ZnDbObjectId failing;                // this body reports a failure instead

  ZnDbObjectId outputId() const;
  double wantedRadius() const;
  void evaluateOverride() override;
  Quorl::ErrorStatus addMoreObjectsToDeepCloneOverride(ZnDbIdMapping& mapping,
                                                       ZnArray<ZnDbObjectId>& more) const override;
  Quorl::ErrorStatus postProcessAfterDeepCloneOverride(ZnDbIdMapping& mapping) override;
  Quorl::ErrorStatus collectPersSubentNamingDataOverride(ZnArray<ZnDbObjectId>& data) const override;
  Quorl::ErrorStatus clonePersSubentNamingDataOverride(ZnDbDatabase*, ZnDbIdMapping& mapping) override;
  static std::vector<ZnDbObjectId> postProcessed;
  static ZnDbObjectId namingData;
};

class AssocTest : public HostDrawingTest {
protected:
  AssocTest();
  ~AssocTest() override;

  ZnDbObjectId addCircle(double radius) { return HostDrawing::addCircle(0.0, radius); }
  ZnDbObjectId addBody();
  // A body whose action reads the inputs (plain ids) and writes the output, which it may read too; it is
  // marked.
  ZnDbObjectId addSum(const std::vector<ZnDbObjectId>& inputs, ZnDbObjectId output, bool readsOutput = false);
  ZnDbObjectId addDependency(ZnDbObjectId bodyId, const ZnDbCompoundObjectId& on, bool isRead, bool isWrite);
  ZnDbAssocStatus statusOf(ZnDbObjectId bodyId) const;
  void setStatus(ZnDbObjectId bodyId, ZnDbAssocStatus status);
  Quorl::ErrorStatus evaluate(ZnDbAssocEvaluationCallback* callback = nullptr);
};

// A layout gives a space its sheet: the block that it shows, the paper and how the block lies on it.
#pragma once

#include "quorl/db/core/object.h"

class ZnDbLayout : public ZnDbObject {
  ZNRX_DECLARE_MEMBERS(ZnDbLayout)

public:
  const ZnString& layoutName() const { return name_; }
  Quorl::ErrorStatus setLayoutName(const ZnString& name); // eInvalidName
  ZnDbObjectId blockTableRecordId() const { return blockId_; }
  void setBlockTableRecordId(ZnDbObjectId block);
  int tabOrder() const { return tabOrder_; }
  void setTabOrder(int order);
  // Paper in millimetres; 0 by 0 means no fixed paper.
  double paperWidth() const { return paperWidth_; }
  double paperHeight() const { return paperHeight_; }
  Quorl::ErrorStatus setPaperSize(double width, double height); // eOutOfRange for negatives

  ZNDB_DECLARE_FIELDS

private:
  ZnString name_;
  ZnDbObjectId blockId_;
  int tabOrder_ = 0;
  double paperWidth_ = 0.0, paperHeight_ = 0.0;
};

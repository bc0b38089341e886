// One mark on one circle, and its stored values.
#pragma once

#include "support/drawing_fixture.h"

class MarkTest : public DrawingTest {
protected:
  using Body = ZnDbCenterMarkActionBody;

  void SetUp() override {
    DrawingTest::SetUp();
    circle_ = addCircle(center_, 10.0);
    mark_ = addMark(circle_);
  }
  template<class Change> void changeBody(Change&& doIt) { change<Body>(bodyOf(mark_), doIt); }
  double stored(const wchar_t* name) const {
    return ask(mark_, [&](const auto& body) { return body.valueOf(name, -1.0); });
  }
  const ZnGePoint3d center_{2.0, 1.0, 0.0};
  ZnDbObjectId circle_, mark_;
};

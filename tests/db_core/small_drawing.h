// A drawing that can be told as text.
#pragma once

#include "quorl/db/table/dictionary.h"
#include "support/host_drawing.h"

class SmallDrawing : public HostDrawingTest {
public:
  // The drawing's objects as text: handle, class, erased mark, and for circles their size and place.
  std::string dump() const {
    std::string text;
    for (const ZnDbObjectId id : db.allObjectIds()) {
      if (id.isErased()) continue;
      text += handleText(id.handle()).utf8() + ' ' + id.objectClass()->name().utf8();
      if (id.isDerivedFrom(ZnDbCircle::desc())) {
        ZnDbHolder<ZnDbCircle> circle(id);
        text += ' ' + std::to_string(circle->radius()) + ' ' + std::to_string(circle->center().x);
      }
      text += ' ' + handleText(id.slot()->object->ownerId().handle()).utf8() + '\n';
    }
    return text;
  }
};

// Watchers of what happens to drawings as a whole, and the registry's event object that tells them.
#pragma once

#include <vector>

#include "quorl/rx/class_members.h"

class ZnDbDatabase;
class ZnDbIdMapping;

class ZnRxEventReactor : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxEventReactor)

public:
  virtual void drawingFileOpened(ZnDbDatabase*, const wchar_t* /*file*/) {} // a file was opened into it
  virtual void firstOpenCompleted(ZnDbDatabase*) {}
  virtual void databaseConstructed(ZnDbDatabase*) {}
  virtual void databaseToBeDestroyed(ZnDbDatabase*) {}
  virtual void beginSave(ZnDbDatabase*, const wchar_t* /*file*/) {}
  virtual void saveComplete(ZnDbDatabase*, const wchar_t* /*file*/) {}
  virtual void abortSave(ZnDbDatabase*) {}
  virtual void beginDeepClone(ZnDbDatabase* /*to*/, ZnDbIdMapping&) {}
  virtual void beginDeepCloneTranslation(ZnDbIdMapping&) {}
  virtual void abortDeepClone(ZnDbIdMapping&) {}
  virtual void endDeepClone(ZnDbIdMapping&) {}
  virtual void beginInsert(ZnDbDatabase* /*to*/, const wchar_t* /*blockName*/, ZnDbDatabase* /*from*/) {}
  virtual void otherInsert(ZnDbDatabase* /*to*/, ZnDbIdMapping&, ZnDbDatabase* /*from*/) {}
  virtual void endInsert(ZnDbDatabase* /*to*/) {}
};

// The entry "ZnRxEvent" of the system registry.
class ZnRxEvent : public ZnRxObject {
  ZNRX_DECLARE_MEMBERS(ZnRxEvent)

public:
  static ZnRxEvent& instance();
  // A reactor is told once, however often it is added; not owned.
  void addReactor(ZnRxEventReactor* reactor);
  void removeReactor(ZnRxEventReactor* reactor);

  // Tells every reactor in order of addition; one that is removed meanwhile is passed over.
  template<class Call> void tell(Call&& call) {
    const std::vector<ZnRxEventReactor*> now = reactors_;
    for (ZnRxEventReactor* reactor : now)
      if (holds(reactor)) call(*reactor);
  }

private:
  bool holds(const ZnRxEventReactor* reactor) const;
  std::vector<ZnRxEventReactor*> reactors_;
};

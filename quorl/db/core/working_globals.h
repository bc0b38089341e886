// What the host tells modules about the work that it is doing, beyond single changes.
#pragma once

struct ZnDbGlobals {
  // Several steps make one change, as while a block is edited or a long script runs: what stands apart for
  // the moment may belong together at its end.
  bool isLongTransactionActive = false;
  // Layers change in number: who follows them waits, and is brought up to date at the end.
  bool isLayerUpdateStopped = false;
};

// Of the operation that works now; null while none has globals of its own.
ZnDbGlobals* zndbWorkingGlobals();
// Of the host at rest.
ZnDbGlobals& zndbDefaultGlobals();
// The first where there are some, else the second.
ZnDbGlobals& zndbCurrentGlobals();

// Globals of an operation, for as long as it lives; those of the operation around it hold again afterwards.
class ZnDbWorkingGlobals {
public:
  ZnDbWorkingGlobals(); // with the values that held before
  ~ZnDbWorkingGlobals();
  ZnDbWorkingGlobals(const ZnDbWorkingGlobals&) = delete;
  ZnDbWorkingGlobals& operator=(const ZnDbWorkingGlobals&) = delete;

  ZnDbGlobals globals;

private:
  ZnDbGlobals* around_;
};

#include "quorl/db/core/transaction.h"

#include "quorl/db/core/database.h"
#include "quorl/db/core/undo.h"

using Quorl::ErrorStatus;

ErrorStatus ZnDbTransactionManager::startTransaction() {
  ZnDbUndoRecorder& undo = database_.undoRecorder();
  if (!undo.isRecording()) return Quorl::eNotProvided;
  marks_.push_back(undo.mark());
  undo.newStates();
  return Quorl::eOk;
}

ErrorStatus ZnDbTransactionManager::endTransaction() {
  if (marks_.empty()) return Quorl::eNoTransaction;
  marks_.pop_back();
  return Quorl::eOk;
}

ErrorStatus ZnDbTransactionManager::abortTransaction() {
  if (marks_.empty()) return Quorl::eNoTransaction;
  database_.undoRecorder().rollBackTo(marks_.back());
  marks_.pop_back();
  return Quorl::eOk;
}

ZnDbTransaction::ZnDbTransaction(ZnDbDatabase& database)
    : database_(database) {
  open_ = database_.transactionManager().startTransaction() == Quorl::eOk;
}

ZnDbTransaction::~ZnDbTransaction() {
  if (open_) database_.transactionManager().abortTransaction();
}

ErrorStatus ZnDbTransaction::end() {
  if (!open_) return Quorl::eNoTransaction;
  open_ = false;
  return database_.transactionManager().endTransaction();
}

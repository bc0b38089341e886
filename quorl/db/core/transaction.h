// Transactions: nested scopes whose changes are kept together or taken back together.
#pragma once

#include <vector>

#include "quorl/base/error_status.h"
#include "quorl/db/core/object_id.h"

class ZnDbTransactionManager {
public:
  explicit ZnDbTransactionManager(ZnDbDatabase& database)
      : database_(database) {}

  Quorl::ErrorStatus startTransaction();
  // Ends the innermost; its changes stay and belong to the one around it. eNoTransaction without one.
  Quorl::ErrorStatus endTransaction();
  // Takes back every change since its start. Objects opened within must be closed.
  Quorl::ErrorStatus abortTransaction();
  int activeTransactionCount() const { return static_cast<int>(marks_.size()); }

private:
  ZnDbDatabase& database_;
  std::vector<size_t> marks_;
};

// A transaction for a scope: aborted on leaving it unless ended.
class ZnDbTransaction {
public:
  explicit ZnDbTransaction(ZnDbDatabase& database);
  ~ZnDbTransaction();
  ZnDbTransaction(const ZnDbTransaction&) = delete;
  ZnDbTransaction& operator=(const ZnDbTransaction&) = delete;
  Quorl::ErrorStatus end();

private:
  ZnDbDatabase& database_;
  bool open_ = true;
};

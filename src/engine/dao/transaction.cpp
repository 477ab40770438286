#include "engine/dao/transaction.h"

#include "engine/dao/database.h"

namespace veldrin::engine {

Transaction::Transaction(Database& database, Writes writes) : TheSession(database.TheSession()) {
  TheSession->Begin(writes);
}

Transaction::~Transaction() {
  if (!Committed) TheSession->Rollback();
}

void Transaction::Commit() {
  TheSession->Commit();
  Committed = true;
}

}  // namespace veldrin::engine

#include "engine/dao/transaction.h"

#include "engine/dao/database.h"

namespace veldrin::engine {

Transaction::Transaction(Database& database, Writes writes)
    : TheSession(database.TheSession()), TheDatabase(database) {
  TheDatabase.Patiently([&] { TheSession->Begin(writes); });
}

Transaction::~Transaction() {
  if (!Committed) TheSession->Rollback();
}

void Transaction::Commit() {
  TheDatabase.Patiently([this] { TheSession->Commit(); });
  Committed = true;
}

}  // namespace veldrin::engine

// A group of writes that is stored as a whole or not at all.
#pragma once

#include <memory>

#include "engine/session.h"

namespace veldrin::engine {

class Database;

/// Its owner commits it; a group that ends without, as by an error, leaves nothing behind. Rows written
/// within are flushed once, at the end. No group stands within another one.
class Transaction {
 public:
  /// The database must outlive the group. Raises 3260 where another machine writes to the catalogue. A group
  /// of the working tables alone waits for nobody.
  explicit Transaction(Database& database, Writes writes = Writes::Catalogue);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Raises the error of the flush; nothing of the group is stored then.
  void Commit();

 private:
  std::shared_ptr<Session> TheSession;
  const Database& TheDatabase;
  bool Committed = false;
};

}  // namespace veldrin::engine

#include "engine/dao/db_engine.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include "engine/dao/connection.h"
#include "engine/dao/errors.h"

namespace veldrin::engine {

namespace {

bool Accepts(const QString& workgroupFile, int lockTimeout, const QString& user, const QString& password) {
  Connection workgroup(workgroupFile, lockTimeout);
  return WithSqliteErrors([&] {
    SQLite::Statement account(workgroup.Sqlite(), "SELECT Salt, PasswordHash FROM Accounts WHERE Name = ?");
    account.bind(1, user.toStdString());
    if (!account.executeStep()) return false;
    const std::string salted = account.getColumn(0).getString() + password.toStdString();
    const QByteArray hash =
        QCryptographicHash::hash(QByteArray::fromStdString(salted), QCryptographicHash::Sha256);
    return hash.toHex().toStdString() == account.getColumn(1).getString();
  });
}

}  // namespace

DBEngine::DBEngine() = default;
DBEngine::~DBEngine() = default;

// The account is asked for once, as long as the three settings stay the same.
void DBEngine::LogOn() {
  const QString account = SystemDB + QLatin1Char('\n') + DefaultUser + QLatin1Char('\n') + DefaultPassword;
  if (account == LoggedOn) return;
  bool accepted = false;
  try {
    accepted = Accepts(SystemDB, LockTimeout, DefaultUser, DefaultPassword);
  } catch (const base::RuntimeError& error) {
    throw base::RuntimeError(
        base::errWorkgroupFileMissing,
        QStringLiteral("Can't start your application. The workgroup information file is missing or "
                       "can't be read: %1")
            .arg(error.Description()));
  }
  if (!accepted)
    throw base::RuntimeError(base::errNotAValidAccount,
                             QStringLiteral("Not a valid account name or password."));
  LoggedOn = account;
}

std::unique_ptr<Database> DBEngine::OpenDatabase(const QString& name) {
  LogOn();
  std::shared_ptr<Connection> connection;
  if (Idle && Idle->File() == name && Idle->IsCurrent()) {
    connection = std::move(Idle);
  } else {
    connection = std::make_shared<Connection>(name, LockTimeout);
  }
  Idle.reset();
  connection->Sqlite().setBusyTimeout(LockTimeout);
  return std::unique_ptr<Database>(new Database(*this, std::move(connection)));
}

void DBEngine::Release(std::shared_ptr<Connection> connection) { Idle = std::move(connection); }

}  // namespace veldrin::engine

#include "engine/dao/db_engine.h"

#include <QCryptographicHash>
#include <array>

#include "base/runtime_error.h"
#include "engine/opened_catalogue.h"

namespace veldrin::engine {

namespace {

bool Accepts(Session& workgroup, const QString& user, const QString& password) {
  const RowSet account = workgroup.Rows(
      QStringLiteral("SELECT Salt, PasswordHash FROM Accounts WHERE Name = ?"), std::array<Value, 1>{user});
  if (account.Rows.empty()) return false;
  const QString salted = account.Rows[0][0].toString() + password;
  const QByteArray hash = QCryptographicHash::hash(salted.toUtf8(), QCryptographicHash::Sha256);
  return QLatin1String(hash.toHex()) == account.Rows[0][1].toString();
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
    accepted = Accepts(*OpenSession(SystemDB, LockTimeout), DefaultUser, DefaultPassword);
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
  if (Opened && Opened->File() == name) {
    Opened->MakeCurrent(LockTimeout);
  } else {
    Opened = std::make_shared<OpenedCatalogue>(name, LockTimeout);
  }
  Opened->Patient = Patient;
  Opened->Beside = Beside;
  return std::make_unique<Database>(Opened);
}

}  // namespace veldrin::engine

#include "engine/dao/database.h"

#include <utility>

#include "base/runtime_error.h"
#include "engine/dao/dynaset.h"
#include "engine/dao/snapshot.h"
#include "engine/dao/transaction.h"
#include "engine/opened_catalogue.h"
#include "engine/sql_dialect.h"

namespace veldrin::engine {

Database::Database(std::shared_ptr<OpenedCatalogue> catalogue) : Catalogue(std::move(catalogue)) {}

Database::~Database() = default;

OpenedCatalogue& Database::Open() const {
  if (!Catalogue) throw base::RuntimeError(base::errObjectNotSet, QStringLiteral("Object variable not set."));
  return *Catalogue;
}

const std::shared_ptr<Session>& Database::TheSession() const { return Open().TheSession(); }

void Database::Append(const TableDef& table) { Open().Append(table); }

void Database::CreateQueryDef(const QueryDef& query) { Open().CreateQueryDef(query); }

// A name that is no table's is found here: a store tells it only by a text.
QString Database::Translate(const QString& sql, Clashes clashes) const {
  Session& session = *TheSession();
  const Translation statement = TranslateStatement(sql, session.Sql(), clashes);
  for (const QString& table : statement.Tables) {
    if (session.ColumnsOf(table).Names.isEmpty()) RaiseNoSuchTable(table);
  }
  return statement.Sql;
}

void Database::Execute(const QString& sql, ExecuteOption option) {
  const QString statement = Translate(sql, option == dbResumeNext ? Clashes::LeaveOut : Clashes::Fail);
  Affected = TheSession()->Execute(statement);
}

void Database::Insert(const QString& table, const QStringList& columns, std::span<const Value> values,
                      ExecuteOption option) {
  Session& session = *TheSession();
  if (LastInsert.Table != table || LastInsert.Columns != columns || LastInsert.Option != option) {
    if (session.ColumnsOf(table).Names.isEmpty()) RaiseNoSuchTable(table);
    const Clashes clashes = option == dbResumeNext ? Clashes::LeaveOut : Clashes::Fail;
    LastInsert = {table, columns, option, InsertSql(session.Sql(), table, columns, clashes)};
  }
  Affected = session.ExecuteRows(LastInsert.Sql, columns.size(), values);
}

std::unique_ptr<Recordset> Database::OpenRecordset(const QString& sql, RecordsetType type) {
  std::unique_ptr<Recordset> opened;
  Patiently([&] {
    if (type == dbOpenDynaset) {
      if (auto source = Open().FindKeySource(sql)) opened = std::make_unique<Dynaset>(Catalogue, *source);
    }
    if (!opened) opened = std::make_unique<Snapshot>(TheSession()->Rows(Translate(sql, Clashes::Fail)));
  });
  return opened;
}

bool Database::WriteGroup(const std::function<bool()>& work) {
  bool stored = false;
  const auto group = [&] {
    Transaction transaction(*this);
    stored = work();
    if (stored) transaction.Commit();
  };
  const auto session = TheSession();
  const Aside beside = Open().Beside;
  beside ? beside(group, [session] { session->Interrupt(); }) : group();
  return stored;
}

void Database::Patiently(const std::function<void()>& action) const { Open().Patiently(action); }

}  // namespace veldrin::engine

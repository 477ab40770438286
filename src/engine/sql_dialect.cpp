#include "engine/sql_dialect.h"

#include <algorithm>

#include "engine/sql_condition.h"

namespace veldrin::engine {

namespace {

void AddToList(SqlTokens& list, const SqlTokens& item) {
  if (!list.empty()) list.push_back(SqlSign(","));
  list.insert(list.end(), item.begin(), item.end());
}

class SqlStatement : SqlCondition {
 public:
  using SqlCondition::SqlCondition;

  Translation Translate(Clashes clashes) {
    if (Next("SELECT")) {
      Select();
    } else if (Next("INSERT")) {
      Insert();
      if (clashes == Clashes::LeaveOut) Write(Engine.LeaveOutClashes());
    } else if (Next("UPDATE")) {
      Update();
    } else {
      Delete();
    }
    return {Finish(), Tables};
  }

 private:
  SqlToken Table() {
    SqlToken table = TakePart();
    Tables << table.Content;
    Write(table);
    return table;
  }

  void Select() {
    Copy("SELECT");
    CopyIf("DISTINCT");
    List([this] { Column(); });
    Copy("FROM");
    Joined();
    Where();
    if (CopyIf("ORDER")) Order();
  }

  void Column() {
    if (CopyIf("*")) return;
    if (Next(".", 1) && Next("*", 2)) {
      Write(TakePart());
      Copy(".");
      return Copy("*");
    }
    if (NextIsCall() && (Next("Max") || Next("Min") || Next("Count"))) {
      Copy();
      Copy("(");
      if (!CopyIf("*")) Name();
      Copy(")");
    } else {
      Operand();
    }
    if (CopyIf("AS")) Write(TakePart());
  }

  // (t INNER JOIN u ON ...) LEFT JOIN v ON ...
  void Joined() {
    if (CopyIf("(")) {
      Joined();
      Copy(")");
    } else {
      Table();
    }
    while (CopyIfAny({"INNER", "LEFT"})) {
      Copy("JOIN");
      Table();
      Copy("ON");
      Disjunction();
    }
  }

  void Where() {
    if (CopyIf("WHERE")) Disjunction();
  }

  // Texts sort without regard to case.
  void Order() {
    Copy("BY");
    List([this] {
      Name();
      Write(Engine.Folded());
      CopyIfAny({"ASC", "DESC"});
    });
  }

  void Insert() {
    Copy("INSERT");
    Copy("INTO");
    Table();
    if (Next("(")) ListInParentheses([this] { Name(); });
    if (!Next("SELECT")) {
      Copy("VALUES");
      return ListInParentheses([this] { Operand(); });
    }
    const size_t select = Out.size();
    Select();
    // Without a condition what ends an INSERT would be read as the SELECT's join.
    const bool where = std::any_of(Out.begin() + static_cast<std::ptrdiff_t>(select), Out.end(),
                                   [](const SqlToken& token) { return token.Is("WHERE"); });
    if (!where) Write({SqlWord("WHERE"), SqlNumber(1), SqlSign("="), SqlNumber(1)});
  }

  void Update() {
    Copy("UPDATE");
    Table();
    Copy("SET");
    List([this] {
      Name();
      Copy("=");
      Operand();
    });
    Where();
  }

  void Delete() {
    Copy("DELETE");
    if (!Next("FROM")) return DeleteOverJoin();
    Copy("FROM");
    Table();
    Where();
  }

  // DELETE t.* FROM t INNER JOIN u ON t.a = u.b AND t.c = u.d [WHERE w] becomes DELETE FROM t WHERE (t.a,
  // t.c) IN (SELECT u.b, u.d FROM u) [AND (w)]: the rows of t are looked up in its index, one by one.
  void DeleteOverJoin() {
    const SqlToken table = TakePart();
    for (const char* word : {".", "*", "FROM"}) Take(word);
    Write(SqlWord("FROM"));
    if (Table().Content.compare(table.Content, Qt::CaseInsensitive) != 0) Refuse();
    for (const char* word : {"INNER", "JOIN"}) Take(word);
    const SqlTokens joined = Apart([this] { Table(); });
    Take("ON");
    SqlTokens columns;
    SqlTokens matches;
    do {
      AddToList(columns, TakeName());
      Take("=");
      AddToList(matches, TakeName());
    } while (Next("AND") && Take().Is("AND"));
    Write({SqlWord("WHERE"), SqlSign("(")});
    Write(columns);
    Write({SqlSign(")"), SqlWord("IN"), SqlSign("("), SqlWord("SELECT")});
    Write(matches);
    Write(SqlWord("FROM"));
    Write(joined);
    Write(SqlSign(")"));
    if (!Next("WHERE")) return;
    Take();
    Write({SqlWord("AND"), SqlSign("(")});
    Disjunction();
    Write(SqlSign(")"));
  }

  QStringList Tables;
};

}  // namespace

Translation TranslateStatement(const QString& sql, const Dialect& dialect, Clashes clashes) {
  return SqlStatement(sql, dialect).Translate(clashes);
}

QString TranslateCondition(const QString& condition, const Dialect& dialect) {
  return SqlCondition(condition, dialect).Translate();
}

QString InsertSql(const Dialect& dialect, const QString& table, const QStringList& columns, Clashes clashes) {
  const QStringList marks(columns.size(), QStringLiteral("?"));
  QString sql = QStringLiteral("INSERT INTO %1 ").arg(table);
  sql += columns.isEmpty() ? QStringLiteral("DEFAULT VALUES")
                           : QStringLiteral("(%1) VALUES (%2)")
                                 .arg(columns.join(QLatin1Char(',')), marks.join(QLatin1Char(',')));
  if (clashes == Clashes::LeaveOut) sql += QLatin1Char(' ') + JoinTokens(dialect.LeaveOutClashes());
  return sql;
}

}  // namespace veldrin::engine

// The one session of a catalogue, and what a new one would have to be told when the files behind it are
// replaced.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "engine/dao/table_def.h"
#include "engine/key_cache.h"
#include "engine/session.h"

namespace veldrin::engine {

/// Where the keys of a statement's rows come from.
struct KeySource {
  QString Table;   ///< the table whose rows the statement shows
  QString Key;     ///< its numeric primary key; empty when it has none, and rows can only be added then
  QString KeySql;  ///< the session's SQL: gives the keys, in any order and perhaps several times
  bool MayLackRows = false;  ///< the keys come from another table and may lack a row in Table
  bool MayBeKept = true;     ///< the keys depend on the linked tables alone
};

class OpenedCatalogue {
 public:
  OpenedCatalogue(const QString& file, int lockTimeout);

  const QString& File() const { return TheFile; }
  const std::shared_ptr<Session>& TheSession() const { return Current; }

  void Append(const TableDef& table);
  void CreateQueryDef(const QueryDef& query);

  /// Where a file was replaced since it was opened, as by its backup, a new session is opened and told of the
  /// links and queries. Raises what opening raises; the former session stays then.
  void MakeCurrent(int lockTimeout);

  /// Takes apart "T", "SELECT T.* FROM T WHERE ..." and "SELECT * FROM T WHERE ...", where T is a table or a
  /// stored query. Nothing when the statement has another shape. Raises 3078 where T is neither.
  std::optional<KeySource> FindKeySource(const QString& sql) const;

  /// The keys of a source, in ascending order, each once.
  KeyList ReadKeys(const KeySource& source);

  /// Runs a read that may take long: beside the caller's thread, with a session of its own, where that can be
  /// done. It is of the linked tables alone.
  void ReadBeside(const std::function<void(Session&)>& read);

  /// Runs an action, and again while another machine's lock refuses it, as long as Patient says.
  void Patiently(const std::function<void()>& action) const { Patient ? Patient(action) : action(); }

  Patience Patient;
  Aside Beside;

 private:
  bool IsLinked(const QString& table) const;
  const QueryDef* FindQuery(const QString& name) const;
  std::optional<QString> MatchOfLinks(const QueryDef& query) const;
  KeySource LinkedKeys(const QueryDef& query, const QString& condition) const;

  QString TheFile;
  std::shared_ptr<Session> Current;
  std::shared_ptr<Session> Reader;  ///< for the other thread; opened when it is needed first
  bool IsReading = false;           ///< the other thread
  std::vector<TableDef> Links;
  std::vector<QueryDef> Queries;
  KeyCache Kept;
};

}  // namespace veldrin::engine

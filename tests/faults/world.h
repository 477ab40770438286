// A catalogue to be harmed, and what has to be true of it afterwards.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <QDirIterator>
#include <QProcess>
#include <map>
#include <memory>

#include "support/test_support.h"

namespace veldrin::test {

constexpr int Photos = 6;

// Of the new pictures, which are known by the days of their dates, the last is none.
constexpr int Sources = 4;
inline QByteArray SourceOf(int day) { return day < Sources ? Jpeg(day) : QByteArray("no picture"); }

// What stands in the catalogue's tables and in the directories of pictures.
struct State {
  std::map<QString, QStringList> Tables;
  std::map<QString, QByteArray> Files;  ///< but for thumbnails, by name
  bool operator==(const State&) const = default;
};

// What one of them has and the other hasn't, for a message.
inline std::string Difference(const State& state, const State& expected) {
  QStringList lines;
  for (const auto& [table, rows] : expected.Tables) {
    for (const QString& row : rows) {
      if (!state.Tables.at(table).contains(row)) lines << "no " + table + u' ' + row;
    }
    for (const QString& row : state.Tables.at(table)) {
      if (!rows.contains(row)) lines << table + u' ' + row;
    }
  }
  for (const auto& [name, bytes] : expected.Files) {
    if (!state.Files.contains(name)) lines << "no " + name;
  }
  for (const auto& [name, bytes] : state.Files) {
    if (!expected.Files.contains(name) || expected.Files.at(name) != bytes) lines << name;
  }
  return lines.join(u'\n').toStdString();
}

inline QStringList RowsOf(SQLite::Database& db, const QString& table) {
  QStringList rows;
  SQLite::Statement all(db, "SELECT * FROM " + table.toStdString() + " ORDER BY 1, 2");
  while (all.executeStep()) {
    QStringList row;
    for (int i = 0; i < all.getColumnCount(); ++i)
      row << QString::fromStdString(all.getColumn(i).getString());
    rows << row.join(u'|');
  }
  return rows;
}

/// A program's directory: a catalogue with folders and photos, new pictures, places for copies and webs.
class World {
 public:
  /// A copy, with the files' times.
  explicit World(const QString& prototype) { QProcess::execute("cp", {"-a", prototype + "/.", Path()}); }

  QString Path() const { return Directory.path(); }

  State Look() const {
    State state;
    SQLite::Database db(Path().toStdString() + "/Database/Photos.mdb", SQLite::OPEN_READWRITE);
    EXPECT_EQ(db.execAndGet("PRAGMA integrity_check").getString(), "ok");
    state.Tables["tblPhotos"] = RowsOf(db, "tblPhotos");
    state.Tables["tblPhotoLinks"] = RowsOf(db, "tblPhotoLinks");
    for (int level = 1; level <= 3; ++level) {
      const QString table = QStringLiteral("tblLevel%1").arg(level);
      state.Tables[table] = RowsOf(db, table);
    }
    for (const char* place : {"/Database/Images", "/Sources", "/Got", "/Webs", "/Sent"}) {
      QDirIterator files(Path() + QLatin1String(place), QDir::Files | QDir::Hidden,
                         QDirIterator::Subdirectories);
      while (files.hasNext()) {
        const QString file = files.next();
        if (!file.contains("/Images/Thumbnails/")) state.Files[file.mid(Path().size())] = ReadFile(file);
      }
    }
    return state;
  }

 private:
  // A mail program takes no file from a directory with a comma, and is given copies.
  QTemporaryDir Directory{QDir::tempPath() + "/world,XXXXXX"};
};

/// A catalogue with some folders and photos, one of them without a file; new pictures, one of them none.
inline std::unique_ptr<TestCatalogue> MakePrototype() {
  auto prototype = std::make_unique<TestCatalogue>();
  const std::pair<const char*, const char*> folders[] = {{"0000", "!UNORGANIZED"},
                                                         {"0001", "Travels"},
                                                         {"00010000", "!UNORGANIZED"},
                                                         {"00010001", "Italy"},
                                                         {"0002", "Home"}};
  for (const auto& [key, name] : folders) prototype->AddFolder(key, name);
  for (int id = 1; id <= Photos; ++id) {
    const char* const place = id % 3 == 0 ? "0002" : id % 3 == 1 ? "00010001" : "0001";
    prototype->AddPhoto(id, QStringLiteral("photo"), {place}, id == 3 ? QSize() : QSize(20 + id, 30));
  }
  const QString program = prototype->ProgramPath();
  for (const char* name : {"/Sources", "/Got", "/Webs", "/Sent", "/Bin"})
    QDir().mkpath(program + QLatin1String(name));
  // Sends what is attached.
  const QString mailer = program + "/Bin/xdg-email";
  WriteFile(mailer,
            "#!/bin/sh\nwhile [ $# -gt 0 ]; do [ \"$1\" = --attach ] && cp \"$2\" ~/Sent; shift; done\n");
  QFile::setPermissions(mailer, QFile::ReadOwner | QFile::ExeOwner);
  for (int day = 1; day <= Sources; ++day) {
    const QString name = QStringLiteral("%1/Sources/new%2.jpg").arg(program).arg(day);
    WriteFile(name, SourceOf(day));
    QFile file(name);
    EXPECT_TRUE(file.open(QIODevice::ReadWrite));
    file.setFileTime(QDateTime(QDate(2001, 1, day), QTime(12, 0)), QFileDevice::FileModificationTime);
  }
  return prototype;
}

}  // namespace veldrin::test

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QFile>

#include "platform/dao/db_engine.h"
#include "platform/dates.h"
#include "platform/runtime_error.h"
#include "platform/sql_dialect.h"
#include "support/test_support.h"

namespace veldrin::platform {
namespace {

template <class Operation>
int NumberOf(Operation&& operation) {
  try {
    operation();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

/// Another program on the same file.
class Stranger {
 public:
  explicit Stranger(const QString& file) {
    EXPECT_EQ(sqlite3_open(file.toUtf8().constData(), &Db), SQLITE_OK);
  }
  ~Stranger() { sqlite3_close(Db); }
  Stranger(const Stranger&) = delete;
  Stranger& operator=(const Stranger&) = delete;
  int Run(const char* sql) { return sqlite3_exec(Db, sql, nullptr, nullptr, nullptr); }

 private:
  sqlite3* Db = nullptr;
};

class Dao : public testing::Test {
 protected:
  void SetUp() override {
    Catalogue.Engine().LockTimeout = 0;
    Db = Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile);
  }

  std::unique_ptr<Recordset> Open(const char* sql) { return Db->OpenRecordset(QLatin1String(sql)); }
  std::unique_ptr<Recordset> Photos() { return Open("SELECT tblPhotos.* FROM tblPhotos"); }
  std::unique_ptr<Recordset> Folder(const QString& key, const QString& where = {}) {
    Db->Execute(QStringLiteral("UPDATE ActFolder SET IDNo = '%1', Length = %2").arg(key).arg(key.size()));
    return Db->OpenRecordset(QStringLiteral("SELECT qryPhotos.* FROM qryPhotos") + where);
  }
  void Execute(const char* sql, ExecuteOption option = dbFailOnError) {
    Db->Execute(QString::fromUtf8(sql), option);
  }

  static std::string Ids(const Recordset& recordset) {
    QStringList ids;
    for (const auto& row : recordset.ReadRows(0, recordset.RecordCount())) {
      ids << (row.empty() ? QStringLiteral("gone") : row.front().toString());
    }
    return ids.join(QLatin1Char(' ')).toStdString();
  }

  const QString Id = QStringLiteral("PhotoID");
  const QString Title = QStringLiteral("Title");
  test::TestCatalogue Catalogue;
  std::unique_ptr<Database> Db;
};

TEST_F(Dao, MovesBetweenItsTwoEnds) {
  for (int id : {3, 1, 2}) Catalogue.AddPhoto(id, QStringLiteral("t"), {});
  const auto photos = Photos();
  EXPECT_EQ(photos->Field(Id), 1);
  photos->MovePrevious();
  EXPECT_TRUE(photos->BOF());
  EXPECT_EQ(photos->AbsolutePosition(), -1);
  EXPECT_EQ(NumberOf([&] { photos->MovePrevious(); }), errNoCurrentRecord);
  EXPECT_EQ(NumberOf([&] { photos->Field(Id); }), errNoCurrentRecord);
  photos->MoveLast();
  const int last = photos->Bookmark();
  photos->MoveNext();
  EXPECT_TRUE(photos->AtEOF());
  EXPECT_EQ(NumberOf([&] { photos->MoveNext(); }), errNoCurrentRecord);
  EXPECT_EQ(NumberOf([&] { photos->SetAbsolutePosition(3); }), errNoCurrentRecord);
  photos->MoveFirst();
  photos->SetBookmark(last);
  EXPECT_EQ(photos->Field(Id), 3);
  EXPECT_EQ(NumberOf([&] { photos->SetBookmark(4); }), errNoCurrentRecord);
  EXPECT_EQ(photos->AbsolutePosition(), 2);
  EXPECT_EQ(NumberOf([&] { photos->Field(QStringLiteral("Titel")); }), errItemNotFound);
}

TEST_F(Dao, AnEmptyListHasNoCurrentRecord) {
  const auto photos = Photos();
  EXPECT_TRUE(photos->BOF());
  EXPECT_TRUE(photos->AtEOF());
  EXPECT_EQ(NumberOf([&] { photos->MoveFirst(); }), errNoCurrentRecord);
  EXPECT_EQ(NumberOf([&] { photos->Delete(); }), errNoCurrentRecord);
  photos->FindFirst(QStringLiteral("[PhotoID] = 1"));
  EXPECT_TRUE(photos->NoMatch());
}

TEST_F(Dao, WritesFields) {
  const QDateTime date(QDate(1925, 3, 9), QTime(23, 59, 1));
  const auto photos = Photos();
  EXPECT_EQ(NumberOf([&] { photos->SetField(Title, QStringLiteral("x")); }), 3020);
  photos->AddNew();
  photos->SetField(Id, 7);
  photos->SetField(Title, QStringLiteral("Föhn 🏔 'x'"));
  photos->SetField(QStringLiteral("CreateDate"), date);
  photos->Update();

  const auto added = Open("SELECT * FROM tblPhotos WHERE PhotoID = 7");
  EXPECT_EQ(added->Field(Title), QStringLiteral("Föhn 🏔 'x'"));
  EXPECT_EQ(added->Field(QStringLiteral("CreateDate")), date);
  EXPECT_TRUE(IsNull(added->Field(QStringLiteral("MadeBy"))));
  added->Edit();
  added->SetField(Title, {});
  added->Update();
  EXPECT_TRUE(IsNull(added->Field(Title)));
  added->Edit();
  added->Update();

  photos->AddNew();
  photos->SetField(Id, 7);
  EXPECT_EQ(NumberOf([&] { photos->Update(); }), errDuplicateKey);
  photos->AddNew();
  photos->SetField(Id, 8);
  photos->Update();
  EXPECT_EQ(Ids(*Photos()), "7 8");
}

TEST_F(Dao, RefusesWhatIsTooLong) {
  struct {
    const char* Field;
    int Size;
  } const sizes[] = {{"ImageType", 3}, {"Title", 60}, {"MadeBy", 26}, {"Description", 255}};
  Catalogue.AddPhoto(1, QStringLiteral("t"), {});
  const auto photos = Photos();
  for (const auto& [name, size] : sizes) {
    const QString field = QLatin1String(name);
    // Characters are counted, not their units of storage.
    const QString fits = QStringLiteral("🏔").repeated(size);
    photos->Edit();
    EXPECT_EQ(NumberOf([&] { photos->SetField(field, fits + QStringLiteral("x")); }), errFieldTooSmall)
        << name;
    photos->SetField(field, fits);
    photos->Update();
    EXPECT_EQ(photos->Field(field), fits);
    for (const ExecuteOption option : {dbFailOnError, dbResumeNext}) {
      const QString insert = QStringLiteral("INSERT INTO tblPhotos (PhotoID, %1) VALUES (2, '%2')");
      EXPECT_EQ(NumberOf([&] { Db->Execute(insert.arg(field, fits + QStringLiteral("x")), option); }),
                errFieldTooSmall);
    }
  }
  for (const char* sql :
       {"INSERT INTO tblPhotos (PhotoID) VALUES (2147483648)",
        "INSERT INTO tblPhotos (PhotoID, CreateDate) VALUES (2, 'soon')",
        "INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES ('0001', 1)",
        "INSERT INTO tblLevel10 (IDNo) VALUES ('00010001000100010001000100010001000110000')",
        "UPDATE ActFolder SET Length = 32768"}) {
    EXPECT_EQ(NumberOf([&] { Execute(sql); }), errFieldTooSmall) << sql;
  }
  Execute("INSERT INTO tblLevel1 (IDNo, FolderName) VALUES ('10000', 'the ten thousandth')");
}

TEST_F(Dao, ARowDeletedBehindItsBackCannotBeReadOrWritten) {
  for (int id : {1, 2, 3}) Catalogue.AddPhoto(id, QStringLiteral("t"), {});
  const auto photos = Photos();
  photos->MoveNext();
  Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 2")});
  EXPECT_EQ(Ids(*photos), "1 gone 3");
  EXPECT_EQ(NumberOf([&] { photos->Field(Id); }), errRecordDeleted);
  photos->Edit();
  photos->SetField(Title, QStringLiteral("new"));
  EXPECT_EQ(NumberOf([&] { photos->Update(); }), errRecordDeleted);
  EXPECT_EQ(NumberOf([&] { photos->Delete(); }), errRecordDeleted);
  photos->MoveNext();
  EXPECT_EQ(photos->Field(Id), 3);
  photos->Delete();
  EXPECT_EQ(NumberOf([&] { photos->Field(Id); }), errRecordDeleted);
  EXPECT_EQ(Ids(*Photos()), "1");
}

TEST_F(Dao, AFolderShowsTheLinkedPhotosOfItsSubtreeOnce) {
  Catalogue.AddPhoto(5, QStringLiteral("Beach"), {QStringLiteral("0001"), QStringLiteral("00010002")});
  Catalogue.AddPhoto(4, QStringLiteral("beach house"), {QStringLiteral("000100020003")});
  Catalogue.AddPhoto(3, QStringLiteral("Forest"), {QStringLiteral("0002"), QString()});
  Catalogue.AddPhoto(900000, QStringLiteral("far"), {QStringLiteral("0002")});
  Execute(
      ("INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES ('0001" + std::string(36, '0') + "', 77)").c_str());
  Execute(
      ("INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES ('0002" + std::string(36, '0') + "', 78)").c_str());
  struct {
    const char* Key;
    const char* Where;
    const char* Ids;
  } const cases[] = {
      {"0001", "", "4 5"},
      {"00010000", "", "5"},
      {"00010002", "", "4 5"},
      {"0002", "", "3 900000"},
      {"0000", "", "3"},
      {"00", "", "3 4 5 900000"},
      {"0001", " WHERE Title Like '*house*'", "4"},
      {"0001", " WHERE PhotoID = 5 OR PhotoID = 3", "5"},
      {"0001", " WHERE Title = 'BEACH'", "5"},
      {"0003", "", ""},
  };
  for (const auto& [key, where, ids] : cases) {
    const auto list = Folder(QLatin1String(key), QLatin1String(where));
    EXPECT_EQ(Ids(*list), ids) << key << where;
    const auto all = Db->OpenRecordset(
        QStringLiteral("SELECT PhotoID FROM qryPhotos%1 ORDER BY PhotoID").arg(QLatin1String(where)),
        dbOpenSnapshot);
    EXPECT_EQ(Ids(*all), ids) << key << where << " by the stored query itself";
  }
}

TEST_F(Dao, FindsWithinItsList) {
  Catalogue.AddPhoto(1, QStringLiteral("Beach"), {QStringLiteral("0002")});
  Catalogue.AddPhoto(2, QStringLiteral("o'clock"), {QStringLiteral("0001")});
  Catalogue.AddPhoto(3, QStringLiteral("At the beach"), {QStringLiteral("0001"), QStringLiteral("00010001")});
  struct {
    const char* Criteria;
    int Root;  ///< the photo found, 0 for none
    int Folder;
  } const cases[] = {
      {"[Title] LIKE '*BEACH*'", 1, 3},    {"[PhotoID] = 1", 1, 0},
      {"[Title] LIKE '*o''clock*'", 2, 2}, {"DateValue([CreateDate]) = #7/4/2001#", 1, 2},
      {"[Title] LIKE '*mountain*'", 0, 0}, {"DateValue([CreateDate]) = #2001-07-05#", 0, 0},
  };
  const auto root = Photos();
  const auto folder = Folder(QStringLiteral("0001"));
  for (const auto& [criteria, inRoot, inFolder] : cases) {
    for (const auto& [list, id] : {std::pair{root.get(), inRoot}, std::pair{folder.get(), inFolder}}) {
      list->MoveLast();
      list->FindFirst(QLatin1String(criteria));
      EXPECT_EQ(list->NoMatch(), id == 0) << criteria;
      EXPECT_EQ(list->Field(Id), id == 0 ? 3 : id) << criteria;
    }
  }
  // A row that came later has no place in the list.
  Catalogue.AddPhoto(9, QStringLiteral("late"), {QStringLiteral("0001")});
  folder->FindFirst(QStringLiteral("[PhotoID] = 9"));
  EXPECT_TRUE(folder->NoMatch());
  EXPECT_EQ(NumberOf([&] { folder->FindFirst(QStringLiteral("[PhotoID] = 1 2")); }), errSyntax);
}

TEST_F(Dao, FindsOnFromTheCurrentRow) {
  // Keys close together, far apart and at the ends of their range.
  const std::vector<int> ids = {-2147483647, 1, 2, 4, 500, 70000, 2147483647};
  for (int id : ids) Catalogue.AddPhoto(id, id % 2 == 0 ? QStringLiteral("even") : QStringLiteral("odd"), {});
  Catalogue.AddPhoto(3, QStringLiteral("even, elsewhere"), {});
  const auto list = Open("SELECT tblPhotos.* FROM tblPhotos WHERE PhotoID <> 3");
  QStringList found;
  for (list->FindFirst(QStringLiteral("[Title] LIKE '*even*'")); !list->NoMatch();
       list->FindNext(QStringLiteral("[Title] LIKE '*even*'"))) {
    found << QString::number(list->Bookmark());
  }
  EXPECT_EQ(found.join(QLatin1Char(' ')), QStringLiteral("2 4 500 70000"));
  EXPECT_EQ(list->Field(Id), 70000);
  list->FindNext(QStringLiteral("[PhotoID] = 2147483647"));
  EXPECT_FALSE(list->NoMatch());
  list->MoveNext();
  list->FindNext(QStringLiteral("[PhotoID] = 1"));
  EXPECT_TRUE(list->NoMatch());
  list->FindFirst(QStringLiteral("[PhotoID] = -2147483647"));
  EXPECT_EQ(list->AbsolutePosition(), 0);
  EXPECT_EQ(list->TypeOf(Title), dbText);
  EXPECT_EQ(list->TypeOf(QStringLiteral("LastModifyDate")), dbDate);
  EXPECT_EQ(list->TypeOf(Id), dbLong);
  EXPECT_EQ(NumberOf([&] { list->TypeOf(QStringLiteral("Titel")); }), errItemNotFound);
}

// A condition that closes its parenthesis would show photos of other folders.
TEST_F(Dao, AConditionDoesNotLeaveItsFolder) {
  Catalogue.AddPhoto(1, QStringLiteral("in"), {QStringLiteral("0001")});
  Catalogue.AddPhoto(2, QStringLiteral("out"), {QStringLiteral("0002")});
  const QString wide = QStringLiteral(" WHERE Title = 'x' OR '1' = '1'");
  EXPECT_EQ(Ids(*Folder(QStringLiteral("0001"), wide)), "1");
  const QString open = QStringLiteral(" WHERE Title = 'x') OR ('1' = '1'");
  EXPECT_EQ(NumberOf([&] { Folder(QStringLiteral("0001"), open); }), errSyntax);
  const auto list = Folder(QStringLiteral("0001"));
  EXPECT_EQ(NumberOf([&] { list->FindFirst(QStringLiteral("1 = 1) OR (1 = 1")); }), errSyntax);
}

TEST_F(Dao, ClashingRowsAreDroppedAndTheOthersGoIn) {
  Execute("INSERT INTO ActPhotoLinks (IDNo, PhotoID) VALUES ('1', 1)");
  Execute("INSERT INTO CheckPhotos (PhotoID) VALUES (1)");
  Execute("INSERT INTO CheckPhotos (PhotoID) VALUES (2)");
  const char* insert = "INSERT INTO ActPhotoLinks SELECT '1' as IDNo, PhotoID FROM CheckPhotos";
  EXPECT_EQ(NumberOf([&] { Execute(insert); }), errDuplicateKey);
  EXPECT_EQ(Catalogue.Value(QStringLiteral("SELECT Count(*) FROM ActPhotoLinks")), QStringLiteral("1"));
  Execute(insert, dbResumeNext);
  EXPECT_EQ(Db->RecordsAffected(), 1);
  EXPECT_EQ(Catalogue.Rows(QStringLiteral("SELECT * FROM ActPhotoLinks")).join(QLatin1Char(' ')),
            QStringLiteral("1|1 1|2"));
}

TEST_F(Dao, TwoFilesTakePartInOneDelete) {
  Catalogue.AddPhoto(1, QStringLiteral("a"), {QStringLiteral("0001"), QStringLiteral("0002")});
  Catalogue.AddPhoto(2, QStringLiteral("b"), {QStringLiteral("0001")});
  Execute("INSERT INTO ActPhotoLinks (IDNo, PhotoID) VALUES ('x', 1)");
  Execute(
      "DELETE tblPhotoLinks.* FROM tblPhotoLinks INNER JOIN ActPhotoLinks ON tblPhotoLinks.PhotoID = "
      "ActPhotoLinks.PhotoID WHERE tblPhotoLinks.IDNo Like '0001*'");
  EXPECT_EQ(Catalogue.Rows(QStringLiteral("SELECT Left(IDNo, 4), PhotoID FROM tblPhotoLinks ORDER BY IDNo"))
                .join(QLatin1Char(' ')),
            QStringLiteral("0001|2 0002|1"));
}

TEST_F(Dao, ErrorsHaveTheirNumbers) {
  Catalogue.AddPhoto(1, QStringLiteral("t"), {});
  struct {
    const char* Sql;
    int Number;
  } const cases[] = {{"DELETE FROM tblNothing", errNoSuchTable},
                     {"DELETE FROM tblPhotos WHERE Titel = 1", errTooFewParameters},
                     {"DELETE tblPhotos", errSyntax},
                     {"DELETE FROM", errSyntax}};
  for (const auto& [sql, number] : cases) EXPECT_EQ(NumberOf([&] { Execute(sql); }), number) << sql;
  EXPECT_EQ(NumberOf([&] { Open("SELECT qryNone.* FROM qryNone"); }), errNoSuchTable);
  const auto snapshot = Db->OpenRecordset(QStringLiteral("SELECT * FROM tblPhotos"), dbOpenSnapshot);
  EXPECT_EQ(NumberOf([&] { snapshot->Edit(); }), errReadOnly);

  Stranger other(Catalogue.Paths().DatabaseFile);
  ASSERT_EQ(other.Run("BEGIN EXCLUSIVE"), SQLITE_OK);
  const auto photos = NumberOf([&] { Photos()->RecordCount(); });
  EXPECT_EQ(photos, errLocked);
  EXPECT_EQ(NumberOf([&] { Execute("DELETE FROM tblPhotos"); }), errLocked);
  ASSERT_EQ(other.Run("COMMIT"), SQLITE_OK);
  EXPECT_EQ(Ids(*Photos()), "1");
}

// Another machine must be able to write between two events of this one.
TEST_F(Dao, AnOpenListHoldsNoLock) {
  for (int id : {1, 2, 900000}) Catalogue.AddPhoto(id, QStringLiteral("t"), {QStringLiteral("0001")});
  Stranger other(Catalogue.Paths().DatabaseFile);
  const auto list = Folder(QStringLiteral("0001"));
  list->Field(Title);
  list->FindFirst(QStringLiteral("[PhotoID] = 2"));
  Catalogue.Rows(QStringLiteral("SELECT * FROM tblPhotos"));
  EXPECT_EQ(other.Run("UPDATE tblPhotos SET Title = 'other'"), SQLITE_OK);
  list->MoveNext();
  EXPECT_EQ(list->Field(Title), QStringLiteral("other"));
  // A read that failed in the middle leaves no lock and no error behind.
  ASSERT_EQ(other.Run("BEGIN EXCLUSIVE"), SQLITE_OK);
  EXPECT_EQ(NumberOf([&] { list->ReadRows(0, 3); }), errLocked);
  ASSERT_EQ(other.Run("COMMIT"), SQLITE_OK);
  EXPECT_EQ(Ids(*list), "1 2 900000");
}

TEST_F(Dao, AGroupIsStoredWholeOrNotAtAll) {
  Db->BeginTrans();
  Execute("INSERT INTO tblPhotos (PhotoID) VALUES (1)");
  Db->Close();
  EXPECT_EQ(NumberOf([&] { Execute("DELETE FROM tblPhotos"); }), errObjectNotSet);
  Db = Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile);
  EXPECT_EQ(Ids(*Photos()), "");
  Db->BeginTrans();
  Execute("INSERT INTO tblPhotos (PhotoID) VALUES (1)");
  Db->CommitTrans();
  EXPECT_EQ(Ids(*Photos()), "1");
}

// A catalogue that was taken away while the program runs must not be written to as a file without a name.
TEST_F(Dao, TheNextOpeningMissesAFileThatWent) {
  const QString file = Catalogue.Paths().DatabaseFile;
  Db->Close();
  ASSERT_TRUE(QFile::rename(file, file + QStringLiteral(".away")));
  EXPECT_EQ(NumberOf([&] { Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile); }), errNoSuchFile);
  ASSERT_TRUE(QFile::rename(file + QStringLiteral(".away"), file));
  EXPECT_EQ(NumberOf([&] { Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile); }), 0);
}

TEST_F(Dao, TheAccountIsAskedFor) {
  struct {
    const char* User;
    const char* Password;
    const char* Workgroup;
    int Number;
  } const cases[] = {{"Veldrin", "wrong", "/Database/Veldrin.MDW", errNotAValidAccount},
                     {"Nobody", "qzmvrtkle", "/Database/Veldrin.MDW", errNotAValidAccount},
                     {"Veldrin", "qzmvrtkle", "/Database/None.MDW", errWorkgroupFileMissing},
                     {"Veldrin", "qzmvrtkle", "/Database/Photos.mdb", errWorkgroupFileMissing},
                     {"Veldrin", "qzmvrtkle", "/Database/Veldrin.MDW", 0}};
  for (const auto& [user, password, workgroup, number] : cases) {
    DBEngine engine;
    engine.DefaultUser = QLatin1String(user);
    engine.DefaultPassword = QLatin1String(password);
    engine.SystemDB = Catalogue.ProgramPath() + QLatin1String(workgroup);
    EXPECT_EQ(NumberOf([&] { engine.OpenDatabase(Catalogue.Paths().WorkFile); }), number)
        << user << workgroup;
  }
}

TEST_F(Dao, ShortListsOfFoldersSortWithoutCase) {
  for (const char* row : {"'0001', 'beach'", "'0002', 'Alps'", "'0000', '!UNORGANIZED'", "'0003', 'Äpfel'"}) {
    Execute((std::string("INSERT INTO tblLevel1 (IDNo, FolderName) VALUES (") + row + ")").c_str());
  }
  EXPECT_EQ(Catalogue.Rows(QStringLiteral("SELECT FolderName FROM tblLevel1 ORDER BY FolderName"))
                .join(QLatin1Char(' ')),
            QStringLiteral("!UNORGANIZED Alps beach Äpfel"));
}

TEST(Dates, KeepTimesThatALocalClockLeavesOut) {
  const QByteArray zone = qgetenv("TZ");
  qputenv("TZ", "America/Sao_Paulo");  // midnight of 4 November 2018 doesn't exist there
  for (const char* text : {"2018-11-04 00:00:00", "2001-03-25 02:30:00"}) {
    const QDateTime date = DateFromStore(QLatin1String(text));
    EXPECT_TRUE(date.isValid());
    EXPECT_EQ(DateToStore(date), QLatin1String(text));
    EXPECT_EQ(DateToStore(ParseDate(QLatin1String(text)).value_or(QDateTime())), QLatin1String(text));
  }
  zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
}

}  // namespace
}  // namespace veldrin::platform

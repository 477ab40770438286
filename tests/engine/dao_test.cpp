#include <QSemaphore>
#include <thread>

#include "base/dates.h"
#include "engine/dao/db_engine.h"
#include "engine/dao/transaction.h"
#include "support/environment.h"
#include "support/test_support.h"

namespace veldrin::engine {
namespace {

using test::ErrorOf;
using test::HeldCatalogue;

struct Dao : testing::Test {
  void SetUp() override {
    Catalogue.Engine().LockTimeout = 0;
    Db = Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile);
  }

  void AddPhotos(const std::vector<int>& ids, const QStringList& folders = {}) {
    for (int id : ids) Catalogue.AddPhoto(id, "t", folders);
  }
  std::unique_ptr<Recordset> Photos() { return Db->OpenRecordset("SELECT tblPhotos.* FROM tblPhotos"); }
  std::unique_ptr<Recordset> Folder(const QString& key, const QString& where = {}) {
    Db->Execute(QStringLiteral("UPDATE ActFolder SET IDNo = '%1', Length = %2").arg(key).arg(key.size()));
    return Db->OpenRecordset("SELECT qryPhotos.* FROM qryPhotos" + where);
  }
  int ErrorOfSql(const QString& sql, ExecuteOption option = dbFailOnError) {
    return ErrorOf([&] { Db->Execute(sql, option); });
  }

  static QString Ids(const Recordset& recordset) {
    QStringList ids;
    for (const auto& row : recordset.ReadRows(0, recordset.RecordCount())) {
      ids << (row.empty() ? "gone" : row.front().toString());
    }
    return ids.join(' ');
  }

  test::TestCatalogue Catalogue;
  std::unique_ptr<Database> Db;
};

TEST_F(Dao, NoRowBeyondItsEndsIsReadOrWritten) {
  const auto empty = Photos();
  EXPECT_EQ(ErrorOf([&] { empty->MoveFirst(); }), base::errNoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { empty->Delete(); }), base::errNoCurrentRecord);
  AddPhotos({3, 1, 2});
  const auto photos = Photos();
  photos->MoveLast();
  photos->MoveNext();
  EXPECT_TRUE(photos->AtEOF());
  EXPECT_EQ(ErrorOf([&] { photos->MoveNext(); }), base::errNoCurrentRecord);
  EXPECT_EQ(ErrorOf([&] { photos->Field("PhotoID"); }), base::errNoCurrentRecord);
  photos->SetBookmark(3);
  EXPECT_EQ(ErrorOf([&] { photos->SetBookmark(4); }), base::errNoCurrentRecord);
  EXPECT_EQ(photos->Field("PhotoID"), 3);
  EXPECT_EQ(ErrorOf([&] { photos->Field("Titel"); }), base::errItemNotFound);
}

TEST_F(Dao, AWriteThatWasRefusedLeavesTheListFit) {
  const auto photos = Photos();
  EXPECT_EQ(ErrorOf([&] { photos->SetField("Title", "x"); }), 3020);
  const auto add = [&](int id) {
    photos->AddNew();
    photos->SetField("PhotoID", id);
    photos->Update();
  };
  add(7);
  EXPECT_EQ(ErrorOf([&] { add(7); }), base::errDuplicateKey);
  add(8);
  const auto added = Photos();
  EXPECT_EQ(Ids(*added), "7 8");
  EXPECT_TRUE(IsNull(added->Field("Title")));
  added->Edit();
  added->Update();
}

TEST_F(Dao, RefusesWhatIsTooLong) {
  AddPhotos({1});
  const auto photos = Photos();
  // Characters are counted, not their units of storage.
  const QString fits = QStringLiteral("🏔").repeated(60);
  photos->Edit();
  EXPECT_EQ(ErrorOf([&] { photos->SetField("Title", fits + "x"); }), base::errFieldTooSmall);
  photos->SetField("Title", fits);
  photos->Update();
  EXPECT_EQ(photos->Field("Title"), fits);
  for (ExecuteOption option : {dbFailOnError, dbResumeNext}) {
    EXPECT_EQ(ErrorOfSql("UPDATE ActFolder SET Length = 32768", option), base::errFieldTooSmall);
    EXPECT_EQ(ErrorOfSql("UPDATE tblPhotos SET Title = '" + fits + "x'", option), base::errFieldTooSmall);
  }
  for (const QString& sql :
       QStringList{"INSERT INTO tblPhotos (PhotoID, Title) VALUES (2, '" + fits + "x')",
                   "INSERT INTO tblPhotos (PhotoID) VALUES (2147483648)",
                   "INSERT INTO tblPhotos (PhotoID, CreateDate) VALUES (2, 'soon')",
                   "INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES ('0001', 1)",
                   "INSERT INTO tblLevel10 (IDNo) VALUES ('00010001000100010001000100010001000110000')"}) {
    EXPECT_EQ(ErrorOfSql(sql, dbFailOnError), base::errFieldTooSmall) << sql.toStdString();
    EXPECT_EQ(ErrorOfSql(sql, dbResumeNext), base::errFieldTooSmall) << sql.toStdString();
  }
}

TEST_F(Dao, ARowDeletedBehindItsBackCannotBeReadOrWritten) {
  AddPhotos({1, 2, 3});
  const auto photos = Photos();
  photos->MoveNext();
  Catalogue.Execute({"DELETE FROM tblPhotos WHERE PhotoID = 2"});
  EXPECT_EQ(Ids(*photos), "1 gone 3");
  EXPECT_EQ(ErrorOf([&] { photos->Field("Title"); }), base::errRecordDeleted);
  photos->Edit();
  photos->SetField("Title", "new");
  EXPECT_EQ(ErrorOf([&] { photos->Update(); }), base::errRecordDeleted);
  EXPECT_EQ(ErrorOf([&] { photos->Delete(); }), base::errRecordDeleted);
  photos->MoveNext();
  photos->Delete();
  EXPECT_EQ(Ids(*photos), "1 gone gone");
}

TEST_F(Dao, AFolderShowsTheLinkedPhotosOfItsSubtreeOnce) {
  Catalogue.AddPhoto(5, "Beach", {"0001", "00010002"});
  Catalogue.AddPhoto(4, "beach house", {"000100020003"});
  Catalogue.AddPhoto(3, "Forest", {"0002", {}});
  Catalogue.AddPhoto(900000, "far", {"0002"});
  // A link to a photo that went.
  Db->Execute("INSERT INTO tblPhotoLinks (IDNo, PhotoID) VALUES ('0001" + QString(36, '0') + "', 77)");
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"0001", "", "4 5"},
      {"00010000", "", "5"},
      {"0002", "", "3 900000"},
      {"00", "", "3 4 5 900000"},
      {"0001", " WHERE PhotoID = 5 OR PhotoID = 3", "5"},
      {"0001", " WHERE Title = 'BEACH'", "5"},
      {"0003", "", ""},
      {"0001", " WHERE Title = 'x' OR '1' = '1'", "4 5"},
  };
  for (const auto& [key, where, ids] : cases) {
    EXPECT_EQ(Ids(*Folder(key, where)), ids) << key << where;
    const auto query = QStringLiteral("SELECT PhotoID FROM qryPhotos%1 ORDER BY PhotoID").arg(where);
    EXPECT_EQ(Ids(*Db->OpenRecordset(query, dbOpenSnapshot)), ids) << "by the stored query itself";
  }
  // A condition that closes its parenthesis would show photos of other folders.
  EXPECT_EQ(ErrorOf([&] { Folder("0001", " WHERE Title = 'x') OR ('1' = '1'"); }), base::errSyntax);
}

TEST_F(Dao, FindsOnFromTheCurrentRow) {
  // Keys close together, far apart and at the ends of their range.
  for (int id : {-2147483647, 1, 2, 4, 500, 70000, 2147483647}) {
    Catalogue.AddPhoto(id, id % 2 == 0 ? "even" : "odd", {"0001"});
  }
  Catalogue.AddPhoto(3, "even, elsewhere", {"0002"});
  const auto list = Folder("0001");
  QStringList found;
  for (list->FindFirst("[Title] LIKE '*EVEN*'"); !list->NoMatch(); list->FindNext("[Title] LIKE '*EVEN*'")) {
    found << QString::number(list->Bookmark());
  }
  EXPECT_EQ(found, QStringList({"2", "4", "500", "70000"}));
  EXPECT_EQ(list->Field("PhotoID"), 70000);
  list->MoveLast();
  list->MoveNext();
  list->FindNext("[PhotoID] = 1");
  EXPECT_TRUE(list->NoMatch());
  // A row that came later has no place in the list.
  Catalogue.AddPhoto(9, "late", {"0001"});
  list->FindFirst("[PhotoID] = 9");
  EXPECT_TRUE(list->NoMatch());
  EXPECT_EQ(ErrorOf([&] { list->FindFirst("1 = 1) OR (1 = 1"); }), base::errSyntax);
  // What is looked for in a list that nobody has read yet uses statements beside each other.
  for (int i = 0; i < 100; ++i)
    Db->OpenRecordset(QStringLiteral("SELECT * FROM tblPhotos WHERE PhotoID = %1").arg(i))->RecordCount();
  const auto fresh = Photos();
  fresh->FindFirst("[PhotoID] = 3");
  EXPECT_EQ(fresh->Bookmark(), 3);
}

TEST_F(Dao, ErrorsHaveTheirNumbers) {
  EXPECT_EQ(ErrorOfSql("DELETE FROM tblNothing"), base::errNoSuchTable);
  EXPECT_EQ(ErrorOfSql("DELETE FROM tblPhotos WHERE Titel = 1"), base::errTooFewParameters);
  EXPECT_EQ(ErrorOfSql("DELETE tblPhotos"), base::errSyntax);
  AddPhotos({1});
  EXPECT_EQ(
      ErrorOf([&] { Db->OpenRecordset("SELECT * FROM tblPhotos WHERE PhotoID Like '1*'")->RecordCount(); }),
      base::errSyntax)
      << "a number has no characters";
  EXPECT_EQ(ErrorOfSql("DELETE FROM"), base::errSyntax);
  EXPECT_EQ(ErrorOf([&] { Db->OpenRecordset("SELECT qryNone.* FROM qryNone"); }), base::errNoSuchTable);
  const auto snapshot = Db->OpenRecordset("SELECT * FROM tblPhotos", dbOpenSnapshot);
  EXPECT_EQ(ErrorOf([&] { snapshot->Edit(); }), base::errReadOnly);
}

// Another machine must be able to write between two events of this one.
TEST_F(Dao, AnOpenListHoldsNoLock) {
  AddPhotos({1, 2, 900000}, {"0001"});
  const auto list = Folder("0001");
  list->Field("Title");
  list->FindFirst("[PhotoID] = 2");
  Catalogue.Rows("SELECT * FROM tblPhotos");
  HeldCatalogue(Catalogue, "UPDATE tblPhotos SET Title = 'other'");
  list->MoveNext();
  EXPECT_EQ(list->Field("Title"), "other");
  {
    const HeldCatalogue other(Catalogue, "BEGIN EXCLUSIVE");
    EXPECT_EQ(ErrorOf([&] { Photos()->RecordCount(); }), base::errLocked);
    EXPECT_EQ(ErrorOfSql("DELETE FROM tblPhotos"), base::errLocked);
    EXPECT_EQ(ErrorOf([&] { list->ReadRows(0, 3); }), base::errLocked);
  }
  // A read that failed in the middle leaves no lock and no error behind.
  EXPECT_EQ(Ids(*list), "1 2 900000");
  HeldCatalogue(Catalogue, "BEGIN EXCLUSIVE");
}

TEST_F(Dao, AGroupIsItsOwnersToCommit) {
  const auto group = [this] { return std::make_unique<Transaction>(*Db); };
  const auto add = [this](int id) {
    Db->Execute(QStringLiteral("INSERT INTO tblPhotos (PhotoID) VALUES (%1)").arg(id));
  };
  auto owned = group();
  add(1);
  owned.reset();
  EXPECT_EQ(Ids(*Photos()), "");
  owned = group();
  EXPECT_THROW(HeldCatalogue(Catalogue, "BEGIN IMMEDIATE"), SQLite::Exception) << "before anything is read";
  add(1);
  // Who closes a database in the midst of somebody else's group, and reads in it, ends nothing.
  Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile)->Close();
  EXPECT_EQ(Ids(*Photos()), "1");
  owned->Commit();
  owned.reset();
  EXPECT_EQ(Ids(*Photos()), "1");
  Db->Close();
  EXPECT_EQ(ErrorOfSql("DELETE FROM tblPhotos"), base::errObjectNotSet);
}

// The way back to a list need not read it again, unless anybody has written since.
TEST_F(Dao, AListIsReadAnewAfterEveryChange) {
  AddPhotos({1, 2}, {"0001"});
  AddPhotos({3}, {"0002"});
  EXPECT_EQ(Ids(*Folder("0001")), "1 2");
  EXPECT_EQ(Ids(*Folder("0002")), "3");
  Db->Execute("DELETE FROM tblPhotos WHERE PhotoID = 1");
  EXPECT_EQ(Ids(*Folder("0001")), "2");
  HeldCatalogue(Catalogue, "DELETE FROM tblPhotos WHERE PhotoID = 2");
  EXPECT_EQ(Ids(*Folder("0001")), "");
  {
    const Transaction group(*Db);
    Db->Execute("DELETE FROM tblPhotos");
    EXPECT_EQ(Ids(*Photos()), "");
  }
  EXPECT_EQ(Ids(*Photos()), "3") << "what was read in a group that failed is not kept";
}

// A catalogue that was taken away while the program runs must not be written to as a file without a name, and
// one that was put in its place is the one that list and commands both see.
TEST_F(Dao, TheNextOpeningFollowsTheFile) {
  AddPhotos({1}, {"0001"});
  const QString file = Catalogue.Paths().DatabaseFile;
  ASSERT_TRUE(QFile::copy(file, file + ".backup"));
  AddPhotos({2}, {"0001"});
  const auto list = Folder("0001");
  const auto open = [&] { Catalogue.Engine().OpenDatabase(Catalogue.Paths().WorkFile); };
  ASSERT_TRUE(QFile::rename(file, file + ".away"));
  EXPECT_EQ(ErrorOf(open), base::errNoSuchFile);
  ASSERT_TRUE(QFile::rename(file + ".away", file));
  EXPECT_EQ(ErrorOf(open), 0);
  EXPECT_EQ(Ids(*list), "1 2");
  ASSERT_TRUE(QFile::rename(file + ".backup", file + ".new") && QFile::remove(file) &&
              QFile::rename(file + ".new", file));
  open();
  EXPECT_EQ(Ids(*list), "1 gone");
  EXPECT_EQ(Ids(*Folder("0001")), "1");
}

// A group is of one session, also when the file is replaced meanwhile and another thread opens it anew.
TEST_F(Dao, AGroupInAnotherThreadIsWrittenAsAWholeOrNotAtAll) {
  AddPhotos({1, 2, 3}, {"0001"});
  const QString file = Catalogue.Paths().DatabaseFile;
  ASSERT_TRUE(QFile::copy(file, file + ".backup"));
  DBEngine& engine = Catalogue.Engine();
  const auto open = [&] { engine.OpenDatabase(Catalogue.Paths().WorkFile); };
  std::function<void()> meanwhile;
  engine.Beside = [&](const std::function<void()>& work, const std::function<void()>& stop) {
    std::thread thread(work);
    meanwhile();
    stop();
    thread.join();
  };
  QSemaphore begun;
  QSemaphore goOn;
  meanwhile = [&] {
    begun.acquire();
    EXPECT_TRUE(QFile::rename(file, file + ".old") && QFile::rename(file + ".backup", file));
    EXPECT_EQ(ErrorOf(open), base::errLocked);
    goOn.release();
  };
  const auto database = engine.OpenDatabase(Catalogue.Paths().WorkFile);
  EXPECT_FALSE(database->WriteGroup([&] {
    database->Execute("DELETE FROM tblPhotos WHERE PhotoID = 1");
    begun.release();
    goOn.acquire();
    ErrorOf([&] { database->Execute("DELETE FROM tblPhotos WHERE PhotoID = 2"); });
    return false;
  }));
  engine.Beside = {};
  EXPECT_EQ(ErrorOf(open), 0);
  EXPECT_EQ(Ids(*Folder("0001")), "1 2 3");
}

TEST_F(Dao, TheAccountIsAskedFor) {
  const auto logOn = [this](const char* user, const char* password, const char* workgroup) {
    DBEngine engine;
    engine.DefaultUser = user;
    engine.DefaultPassword = password;
    engine.SystemDB = Catalogue.ProgramPath() + "/Database/" + workgroup;
    return ErrorOf([&] { engine.OpenDatabase(Catalogue.Paths().WorkFile); });
  };
  EXPECT_EQ(logOn("Veldrin", "wrong", "Veldrin.MDW"), base::errNotAValidAccount);
  EXPECT_EQ(logOn("Nobody", "qzmvrtkle", "Veldrin.MDW"), base::errNotAValidAccount);
  EXPECT_EQ(logOn("Veldrin", "qzmvrtkle", "Photos.mdb"), base::errWorkgroupFileMissing);
  EXPECT_EQ(logOn("Veldrin", "qzmvrtkle", "Veldrin.MDW"), 0);
}

TEST(Dates, KeepTimesThatALocalClockLeavesOut) {
  const test::Environment zone{
      {"TZ", "America/Sao_Paulo"}};  // midnight of 4 November 2018 doesn't exist there
  const QString text = "2018-11-04 00:00:00";
  EXPECT_EQ(DateToStore(DateFromStore(text)), text);
  EXPECT_EQ(DateToStore(base::ParseDate(text).value_or(QDateTime())), text);
}

}  // namespace
}  // namespace veldrin::engine

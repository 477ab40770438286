#include "output/mail.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <QUrlQuery>
#include <chrono>
#include <filesystem>

#include "desktop/default_program.h"
#include "output/output_fixture.h"

namespace veldrin::output {
namespace {

using test::OutputFixture;

// A desktop of its own with two mail programs. They write their arguments into a file; then they fail, or
// stay at work, for as long as there is a file that says so. The real xdg-email comes between.
class Desktop {
 public:
  Desktop() {
    QDir().mkpath(Applications());
    QDir().mkpath(Path("bin"));
    for (const char* name : {"mailer", "thunderbird"}) {
      const QByteArray program = Path(name).toUtf8();
      MakeScript(Path(name),
                 "#!/bin/sh\ncd \"$(dirname \"$0\")\"; printf '%s\\n' \"$@\" > part; mv part log\n"
                 "while [ -e stay ]; do sleep 0.02; done; [ ! -e fail ]\n");
      test::WriteFile(Applications() + QLatin1String(name) + QStringLiteral(".desktop"),
                      "[Desktop Entry]\nType=Application\nName=Mail\nExec=" + program + " %u\n");
    }
    qputenv("XDG_DATA_HOME", Path("data").toUtf8());
    qputenv("XDG_CONFIG_HOME", Path("none").toUtf8());
    qputenv("XDG_DATA_DIRS", Path("none").toUtf8());
    qputenv("XDG_CURRENT_DESKTOP", "X-Generic");
    qputenv("DISPLAY", ":0");
    for (const char* name : {"MAILER", "BROWSER", "LC_ALL"}) qunsetenv(name);
    SetMailer("mailer");
  }

  QString Path(const char* name) const { return Directory.filePath(QLatin1String(name)); }
  static void MakeScript(const QString& file, const QByteArray& script) {
    test::WriteFile(file, script);
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  /// The program for mail; none without a name. What the desktop knows follows a little later.
  void SetMailer(const QByteArray& name) const {
    const QString file = Applications() + QStringLiteral("mimeapps.list");
    const QByteArray line = name.isEmpty() ? QByteArray() : "x-scheme-handler/mailto=" + name + ".desktop\n";
    test::WriteFile(file, "[Default Applications]\n" + line);
    const QString expected = name.isEmpty() ? QString() : QString::fromUtf8(name + ".desktop");
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return desktop::GetSchemeClass(QStringLiteral("mailto")) == expected; }));
  }

 private:
  QString Applications() const { return Directory.path() + QStringLiteral("/data/applications/"); }

  QTemporaryDir Directory;
};

// GIO reads the directories' places once in a process.
const Desktop& TheDesktop() {
  static const Desktop desktop;
  return desktop;
}

struct Message {
  QString Body;
  QStringList Files;
};

// What a mail program that gets a mailto address makes of it.
Message FromAddress(const QByteArray& arguments) {
  const QUrlQuery query(
      QUrl(QString::fromUtf8(arguments.trimmed()), QUrl::StrictMode).query(QUrl::FullyEncoded));
  EXPECT_EQ(query.queryItems().size(), 1 + query.allQueryItemValues(QStringLiteral("attach")).size());
  return {query.queryItemValue(QStringLiteral("body"), QUrl::FullyDecoded),
          query.allQueryItemValues(QStringLiteral("attach"), QUrl::FullyDecoded)};
}

// What Thunderbird makes of "-compose body=...,attachment='...,...'".
Message FromCompose(const QByteArray& arguments) {
  const QString text = QString::fromUtf8(arguments).section(QLatin1Char('\n'), 1).trimmed();
  const QString body = text.section(QStringLiteral(",attachment='"), 0, 0).section(QLatin1Char('='), 1);
  QString files = text.section(QStringLiteral(",attachment='"), 1);
  files.chop(1);
  return {QUrl::fromPercentEncoding(body.toUtf8()), files.split(QLatin1Char(','))};
}

class MailTest : public testing::Test {
 protected:
  MailTest() : Desk(TheDesktop()), Mail(Fixture.Data1, Fixture.Catalogue.Paths(), Fixture, Fixture.Window) {
    QFile::remove(Desk.Path("log"));
  }

  bool IsOpen() const { return QFile::exists(Desk.Path("log")); }
  Message Received() const {
    EXPECT_TRUE(IsOpen());
    const QByteArray arguments = test::ReadFile(Desk.Path("log"));
    return arguments.startsWith("-compose") ? FromCompose(arguments) : FromAddress(arguments);
  }
  QStringList Send(const QList<QMessageBox::StandardButton>& boxes = {}) {
    return test::AnswerBoxes([&] { Mail.SendPhotos(); }, boxes);
  }

  const Desktop& Desk;
  OutputFixture Fixture{12};
  PhotoMail Mail;
};

// --- failures ---------------------------------------------------------------------------------------------

struct FailureCase {
  const char* Name;
  std::function<void(const Desktop&, test::TestCatalogue&)> Break;
  const char* Error;
  bool Opened = false;
};

class MailFailures : public MailTest, public testing::WithParamInterface<FailureCase> {
 protected:
  ~MailFailures() override {
    qputenv("PATH", Path);
    QFile::remove(Desk.Path("fail"));
    Desk.SetMailer("mailer");
  }
  QByteArray Path = qgetenv("PATH");
};

TEST_P(MailFailures, ShowABoxAndTheNextMessageComes) {
  Fixture.Select({3, 5});
  GetParam().Break(Desk, Fixture.Catalogue);
  const QStringList boxes = Send({QMessageBox::Ok});
  EXPECT_EQ(boxes.join(QLatin1Char(' ')).section(QLatin1Char(' '), 0, 2),
            QStringLiteral("Error|Error Code: ") + QLatin1String(GetParam().Error));
  EXPECT_EQ(IsOpen(), GetParam().Opened);
  Fixture.ExpectAsBefore();

  qputenv("PATH", Path);
  QFile::remove(Desk.Path("fail"));
  Desk.SetMailer("mailer");
  Fixture.Select({});
  Send();
  EXPECT_EQ(Received().Files.size(), 1);
}

// Another xdg-email, which only fails.
FailureCase ExitCase(const char* name, const char* script, const char* error) {
  return {name,
          [script](const Desktop& desktop, test::TestCatalogue&) {
            Desktop::MakeScript(desktop.Path("bin/xdg-email"), script);
            qputenv("PATH", desktop.Path("bin").toUtf8() + ':' + qgetenv("PATH"));
          },
          error};
}

INSTANTIATE_TEST_SUITE_P(
    , MailFailures,
    testing::Values(
        FailureCase{"NoXdgEmail",
                    [](const Desktop& desktop, auto&) { qputenv("PATH", desktop.Path("none").toUtf8()); },
                    "32003"},
        FailureCase{"NoMailProgram", [](const Desktop& desktop, auto&) { desktop.SetMailer({}); }, "32003"},
        FailureCase{"TheMailProgramFails",
                    [](const Desktop& desktop, auto&) { test::WriteFile(desktop.Path("fail"), {}); }, "32002",
                    true},
        FailureCase{"NoStoredImage",
                    [](const Desktop&, test::TestCatalogue& catalogue) {
                      QFile::remove(catalogue.Paths().ImageDir + OutputFixture::Image(5));
                    },
                    "32011"},
        ExitCase("AnXdgEmailThatCantBeStarted", "#!/no/such/shell\n", "32002"),
        ExitCase("AnXdgEmailThatIsKilled", "#!/bin/sh\nkill -9 $$\n", "32002"),
        ExitCase("ExitOfAMissingFile", "#!/bin/sh\nexit 2\n", "32011"),
        ExitCase("ExitWithoutATool", "#!/bin/sh\nexit 3\n", "32002"),
        ExitCase("ExitOfAnUnreadableFile", "#!/bin/sh\nexit 5\n", "32012")),
    test::CaseName);

// The walk ends where it is.
TEST_F(MailTest, ARecordThatHasGone) {
  Fixture.Select({3, 5, 7});
  Fixture.Catalogue.Execute({QStringLiteral("DELETE FROM tblPhotos WHERE PhotoID = 5")});
  EXPECT_EQ(Send({QMessageBox::Ok}),
            QStringList(QStringLiteral("Error|Error Code: 3167 Record is deleted.")));
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(Fixture.Data1.SuppressReposition);
  EXPECT_EQ(Fixture.Data1.Bookmark(), 5);
}

// --- messages ---------------------------------------------------------------------------------------------

struct MessageCase {
  const char* Name;
  std::vector<int> Selected;
  bool FormView;
  bool TooMany;
  const char* Body;
  std::vector<int> Files;
};

class MailMessages : public MailTest, public testing::WithParamInterface<MessageCase> {};

// On its way the line feed of the body becomes a whole line end, before the carriage return.
TEST_P(MailMessages, HaveTheChosenPhotos) {
  Fixture.Select(GetParam().Selected);
  Fixture.FormView = GetParam().FormView;
  const QStringList expected =
      QStringList(QStringLiteral("Information|The max of 10 photo images can be attached per e-mail!"));
  EXPECT_EQ(GetParam().TooMany ? Send({QMessageBox::Ok}) : expected + Send(), expected);
  QStringList files;
  for (const int id : GetParam().Files)
    files << Fixture.Catalogue.Paths().ImageDir + OutputFixture::Image(id);
  const Message message = Received();
  EXPECT_EQ(message.Body, QLatin1String(GetParam().Body));
  EXPECT_EQ(message.Files, files);
  Fixture.ExpectAsBefore();
}

const auto TenBlanks = "          \r\n\r10 Photo image(s) attached";

INSTANTIATE_TEST_SUITE_P(
    , MailMessages,
    testing::Values(
        MessageCase{"TheCurrentOne", {}, false, false, " \r\n\r1 Photo image attached", {2}},
        MessageCase{"TheOneInFormView", {3, 5}, true, false, " \r\n\r1 Photo image attached", {2}},
        MessageCase{"OneSelected", {4}, false, false, " \r\n\r1 Photo image(s) attached", {4}},
        MessageCase{
            "Ten", {9, 1, 2, 3, 4, 5, 6, 7, 8, 10}, false, false, TenBlanks, {9, 1, 2, 3, 4, 5, 6, 7, 8, 10}},
        MessageCase{"Eleven",
                    {9, 1, 2, 3, 4, 5, 6, 7, 8, 11, 10},
                    false,
                    true,
                    TenBlanks,
                    {9, 1, 2, 3, 4, 5, 6, 7, 8, 11}}),
    test::CaseName);

TEST_F(MailTest, AnEmptyListSendsNothing) {
  Fixture.Data1.RecordSource += QStringLiteral(" WHERE PhotoID > 99");
  Fixture.Data1.Refresh();
  Send();
  EXPECT_FALSE(IsOpen());
}

// --- the mail program -------------------------------------------------------------------------------------

struct PlaceCase {
  const char* Name;
  const char* Mailer;
  const char* Directory;
};

class MailPlaces : public MailTest, public testing::WithParamInterface<PlaceCase> {};

// Names as well as bytes, and of a stored image that is a link to another place.
TEST_P(MailPlaces, ComeThroughWhole) {
  const QString place =
      Fixture.Catalogue.Paths().ImageDir + QString::fromUtf8(GetParam().Directory) + QLatin1Char('/');
  QDir().mkpath(place);
  for (const int id : {1, 2})
    test::WriteFile(place + OutputFixture::Image(id), OutputFixture::Image(id).toUtf8());
  test::WriteFile(Desk.Path("other.png"), "3.jpg");
  QFile::link(Desk.Path("other.png"), place + OutputFixture::Image(3));
  Fixture.Catalogue.Paths().ImageDir = place;
  // The copies of an earlier message.
  const QString earlier = Fixture.Catalogue.Paths().TempDir + QStringLiteral("mail-old");
  QDir().mkdir(earlier);
  std::filesystem::last_write_time(earlier.toStdString(),
                                   std::filesystem::file_time_type::clock::now() - std::chrono::hours(72));
  Fixture.Select({3, 1, 2});
  Desk.SetMailer(GetParam().Mailer);
  Send();
  const Message message = Received();
  EXPECT_EQ(message.Body, QStringLiteral("   \r\n\r3 Photo image(s) attached"));
  QStringList names;
  for (const QString& file : message.Files) {
    names << QFileInfo(file).fileName();
    EXPECT_EQ(test::ReadFile(file), names.back().toUtf8());
  }
  EXPECT_EQ(names.join(QLatin1Char(' ')), QStringLiteral("3.jpg 1.jpg 2.jpg"));
  EXPECT_FALSE(QFile::exists(earlier));
}

constexpr auto OddPlace = "It's 50% öde, & \"größer\" #1? [x] $HOME `id`;=";
constexpr auto WorsePlace = "back\\nslash\\c, line\nend";

INSTANTIATE_TEST_SUITE_P(, MailPlaces,
                         testing::Values(PlaceCase{"ByAddress", "mailer", OddPlace},
                                         PlaceCase{"ByAddressWorse", "mailer", WorsePlace},
                                         PlaceCase{"ByThunderbird", "thunderbird", OddPlace},
                                         PlaceCase{"ByThunderbirdWorse", "thunderbird", WorsePlace}),
                         test::CaseName);

TEST_F(MailTest, AMailProgramThatStaysAtWorkLeavesTheWindowFree) {
  test::WriteFile(Desk.Path("stay"), {});
  bool alive = false;
  bool busy = false;
  QTimer::singleShot(500, &Fixture.Window, [&] {
    alive = true;
    busy = QGuiApplication::overrideCursor() != nullptr;
  });
  Send();
  EXPECT_TRUE(alive && busy);
  EXPECT_TRUE(IsOpen());
  EXPECT_TRUE(QFile::exists(Desk.Path("stay")));
  Fixture.ExpectAsBefore();
  QFile::remove(Desk.Path("stay"));
}

}  // namespace
}  // namespace veldrin::output

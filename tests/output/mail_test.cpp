#include "output/mail.h"

#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <chrono>
#include <filesystem>

#include "output/output_fixture.h"

namespace veldrin::output {
namespace {

// Instead of xdg-email a script, which notes its arguments and stays at work for as long as a file says so.
class MailTest : public test::OutputTest {
 protected:
  MailTest() {
    AddPhotos(12);
    Data1.SetBookmark(2);
    MakeMailer();
    QApplication::setDoubleClickInterval(1);
  }

  QString Path(const char* name) const { return Bin.filePath(name); }
  void MakeMailer(const QByteArray& first = "#!/bin/sh", const QByteArray& end = {}) const {
    const QByteArray script = first +
                              "\ncd \"$(dirname \"$0\")\"; printf '%s\\0' \"$@\" > part; mv part log\n"
                              "while [ -e stay ]; do sleep 0.02; done\n" +
                              end;
    test::WriteFile(Path("xdg-email"), script);
    QFile::setPermissions(Path("xdg-email"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  QString Send(int boxes = 0) {
    QFile::remove(Path("log"));
    return test::AnswerBoxes([&] { Mail.SendPhotos(); }, {boxes, QMessageBox::Ok}).join(' ');
  }
  bool IsOpen() const { return QFile::exists(Path("log")); }
  // The body and the files of the message that came.
  QStringList Received() const {
    QStringList arguments = QString::fromUtf8(test::ReadFile(Path("log")).chopped(1)).split(QChar::Null);
    EXPECT_EQ(arguments.mid(0, 2), QStringList({"--utf8", "--body"}));
    for (int i = 3; i < arguments.size(); ++i) EXPECT_EQ(arguments.takeAt(i), "--attach");
    return arguments.mid(2);
  }

  QTemporaryDir Bin;
  // A desktop without a mail program; the variable stands for one.
  const test::Environment Desktop{{"PATH", Bin.path().toUtf8() + ':' + qgetenv("PATH")},
                                  {"XDG_DATA_HOME", "/none"},
                                  {"XDG_DATA_DIRS", "/none"},
                                  {"XDG_CONFIG_HOME", "/none"},
                                  {"MAILER", "mailer"}};
  controls::LongWork Work{Window};
  PhotoMail Mail{Chosen, Catalogue.Engine(), Catalogue.Paths(), Window, Work, Tell};
};

TEST_F(MailTest, AFailureShowsABoxAndTheNextMessageComes) {
  const std::tuple<const char*, const char*, std::function<void()>> cases[] = {
      {"no mail program", "32003", [] { qunsetenv("MAILER"); }},
      {"no xdg-email", "32003", [] { qputenv("PATH", "/none"); }},
      {"a link", "32012", [this] { QFile::remove(ImageOf(5)) && QFile::link(ImageOf(4), ImageOf(5)); }},
      {"no stored image", "32011", [this] { QFile::remove(ImageOf(5)); }},
      {"not to be started", "32002", [this] { MakeMailer("#!/no/such/shell"); }},
      {"killed", "32002", [this] { MakeMailer("#!/bin/sh", "kill -9 $$"); }},
      {"a missing file", "32011", [this] { MakeMailer("#!/bin/sh", "exit 2"); }},
      {"no tool", "32002", [this] { MakeMailer("#!/bin/sh", "exit 3"); }},
      {"an unreadable file", "32012", [this] { MakeMailer("#!/bin/sh", "exit 5"); }}};
  for (const auto& [name, error, breakIt] : cases) {
    SCOPED_TRACE(name);
    Select({3, 5});
    {
      const test::Environment before{{"PATH", qgetenv("PATH")}, {"MAILER", qgetenv("MAILER")}};
      breakIt();
      EXPECT_TRUE(Send(1).startsWith(QStringLiteral("Error|Error Code: %1 ").arg(error)));
    }
    ExpectAsBefore(2);
    MakeMailer();
    QFile::remove(ImageOf(5));
    test::WriteFile(ImageOf(5), BytesOf(5));
    EXPECT_EQ(Told, "");
    Send();
    EXPECT_EQ(std::exchange(Told, QString()), "2 photos attached to the message");
    EXPECT_EQ(Received(), QStringList({"  \n\r2 Photo image(s) attached", ImageOf(3), ImageOf(5)}));
  }
}

// The body begins with a place for each photo.
TEST_F(MailTest, TheMessageHasTheChosenPhotosAndNotMoreThanTen) {
  const struct {
    std::vector<int> Selected;
    bool FormView;
    QString Body;
    std::vector<int> Files;
  } cases[] = {{{}, false, " \n\r1 Photo image attached", {2}},
               {{3, 5}, true, " \n\r1 Photo image attached", {2}},
               {{4}, false, " \n\r1 Photo image(s) attached", {4}},
               {{9, 1, 2, 3, 4, 5, 6, 7, 8, 11, 10},
                false,
                "          \n\r10 Photo image(s) attached",
                {9, 1, 2, 3, 4, 5, 6, 7, 8, 11}}};
  for (const auto& [selected, formView, body, photos] : cases) {
    Select(selected);
    FormView = formView;
    const bool tooMany = selected.size() > 10;
    EXPECT_EQ(Send(tooMany ? 1 : 0),
              tooMany ? "Information|The max of 10 photo images can be attached per e-mail!" : "");
    QStringList expected(body);
    for (const int id : photos) expected << ImageOf(id);
    EXPECT_EQ(Received(), expected);
    ExpectAsBefore(2);
  }
  FormView = false;
  Select({3, 5, 7});
  Catalogue.Execute({"DELETE FROM tblPhotos WHERE PhotoID = 5"});
  EXPECT_EQ(Send(1), "Error|The photo 5 was changed by another machine.");
  EXPECT_EQ(Received(), QStringList({"  \n\r2 Photo image(s) attached", ImageOf(3), ImageOf(7)}));
  Open(" WHERE PhotoID > 99");
  Send();
  EXPECT_FALSE(IsOpen());
}

// Of names that the mailer takes apart it gets copies.
TEST_F(MailTest, EveryNameComesThroughWhole) {
  const QString images = Catalogue.Paths().ImageDir;
  const QString old[] = {Catalogue.Paths().MailDir + "message-old", Catalogue.Paths().MailDir + "mine",
                         Catalogue.Paths().TempDir + "mail-of-somebody"};
  const auto then = std::filesystem::file_time_type::clock::now() - std::chrono::hours(72);
  for (const QString& earlier : old) {
    QDir().mkpath(earlier);
    std::filesystem::last_write_time(earlier.toStdString(), then);
  }
  Select({3, 1});
  for (const QString& name :
       QStringList{"It's 50% öde & \"größer\" #1? $HOME `id`;=", "back\\slash", "a, b", "line\nend"}) {
    const QString place = images + name + '/';
    QDir().mkdir(place);
    for (const int id : {1, 3}) test::WriteFile(place + QString::number(id) + ".jpg", BytesOf(id));
    Catalogue.Paths().ImageDir = place;
    Send();
    const QStringList files = Received().mid(1);
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(QFileInfo(files.value(i)).fileName(), i == 0 ? "3.jpg" : "1.jpg");
      EXPECT_EQ(test::ReadFile(files.value(i)), BytesOf(i == 0 ? 3 : 1));
      EXPECT_TRUE(files.value(i).startsWith(name.startsWith("It") ? place : Catalogue.Paths().MailDir));
    }
  }
  for (const QString& earlier : old) EXPECT_EQ(QFile::exists(earlier), &earlier != &old[0]);
}

TEST_F(MailTest, WhatTheUserDoesWhileTheMailProgramStartsIsDropped) {
  test::WriteFile(Path("stay"), {});
  QPushButton button(&Window);
  Window.show();
  int presses = 0;
  QObject::connect(&button, &QPushButton::clicked, [&] { ++presses; });
  bool busy = false;
  QTimer alive;
  QObject::connect(&alive, &QTimer::timeout, [&] {
    busy = QGuiApplication::overrideCursor() != nullptr;
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_FALSE(Window.close());
  });
  alive.start(100);
  Send();
  alive.stop();
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_TRUE(busy && IsOpen() && Window.isVisible());
  EXPECT_EQ(presses, 1) << "the one after the launch";
  ExpectAsBefore(2);
  QFile::remove(Path("stay"));
}

}  // namespace
}  // namespace veldrin::output

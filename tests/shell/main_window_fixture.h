// The main window on a small catalogue: Travels > Italy with twenty photos, Home with ten.
#pragma once

#include <QTimer>

#include "catalogue/schema.h"
#include "shell/main_window.h"
#include "support/test_support.h"

namespace veldrin::shell {

using test::TestCatalogue;

class MainWindowTest : public testing::Test, public test::Controls {
 protected:
  MainWindowTest() : TheApp(Catalogue.ProgramPath(), Catalogue.ProgramPath() + "/Temp") {
    for (const auto& [key, name] :
         {std::pair("0000", "!UNORGANIZED"), std::pair("0001", "Travels"),
          std::pair("00010000", "!UNORGANIZED"), std::pair("00010001", "Italy"), std::pair("0002", "Home")}) {
      Catalogue.AddFolder(key, name);
    }
    for (int id = 1; id <= 30; ++id) {
      Catalogue.AddPhoto(id, QStringLiteral("Photo %1").arg(id), {id <= 20 ? "00010001" : "0002"},
                         QSize(30, 20));
    }
    Start();
  }

  void Start(std::unique_ptr<show::Media> media = std::make_unique<show::MediaPlayer>()) {
    if (Window) {
      Window.reset();
      catalogue::CreateWorkFile(Catalogue.Paths(), Catalogue.Engine(), Catalogue.ProgramPath());
      catalogue::OpenCatalogue(Catalogue.Paths(), Catalogue.Engine());
    }
    Window = std::make_unique<frmMain>(TheApp, Catalogue.Paths(), Catalogue.Engine(), std::move(media));
    Root = Window.get();
    Window->Form_Load();
    Get<QTimer>("Timer1").setInterval(3'600'000);  // a show ticks by hand only
    Window->show();
    Window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  }

  QAction& Action(const char* name) { return Get<QAction>(name); }
  // A command, or a button of a view.
  void Choose(const char* name) {
    auto* button = Window->findChild<QAbstractButton*>(name);
    button != nullptr ? button->click() : Action(name).trigger();
  }
  // The names of those of the commands that pass the test.
  QString Those(const QStringList& names, bool (QAction::*test)() const) {
    QStringList passed;
    for (const QString& name : names) {
      if ((Get<QAction>(name).*test)()) passed << name;
    }
    return passed.join(' ');
  }
  controls::TreeView& Tree() { return Get<controls::TreeView>("tvTreeView"); }
  void ClickFolder(int index) {
    Tree().expandAll();
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                      Tree().visualItemRect(Tree().NodeAt(index)).center());
  }
  void ClickThumb(int cell, Qt::KeyboardModifiers keys = {}) {
    QTest::mouseClick(&Get(QStringLiteral("ImgThumb(%1)").arg(cell)), Qt::LeftButton, keys);
  }

  // Does something while the dialog that an action opens is there, and closes it.
  static void OnDialog(
      const char* name, const std::function<void()>& open, const std::function<void()>& action = [] {}) {
    test::InDialog(open, [&](QWidget& dialog) {
      EXPECT_EQ(dialog.objectName(), name);
      action();
    });
  }

  TestCatalogue Catalogue;
  App TheApp;
  std::unique_ptr<frmMain> Window;
};

// The folders by their places in the tree.
constexpr int TopUnorganized = 2, Home = 3, Travels = 4, Italy = 6;

}  // namespace veldrin::shell

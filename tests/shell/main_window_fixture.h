// The main window on a small catalogue: Travels > Italy with twenty photos, Home with ten.
#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <QTimer>

#include "catalogue/schema.h"
#include "folders/folder_tree.h"
#include "shell/main_window.h"
#include "support/test_support.h"

namespace veldrin::shell {

using test::TestCatalogue;

class MainWindowTest : public testing::Test {
 protected:
  MainWindowTest() : App(Catalogue.ProgramPath(), Catalogue.ProgramPath() + QStringLiteral("/Temp")) {
    const auto add = [this](int level, const char* name, const char* parent) {
      folders::AddFolderRecord(Catalogue.Engine(), Catalogue.Paths().WorkFile, level, QLatin1String(name),
                               QLatin1String(parent));
    };
    add(1, "Travels", "");
    add(2, "Italy", "0001");
    add(1, "Home", "");
    for (int id = 1; id <= 30; ++id) {
      Catalogue.AddPhoto(id, QStringLiteral("Photo %1").arg(id),
                         {id <= 20 ? QStringLiteral("00010001") : QStringLiteral("0002")}, QSize(30, 20));
    }
    Start();
  }

  void Start(std::unique_ptr<show::Media> media = std::make_unique<show::MediaPlayer>()) {
    if (Window) {
      Window.reset();
      catalogue::CreateWorkFile(Catalogue.Paths(), Catalogue.Engine(), Catalogue.ProgramPath());
      catalogue::OpenCatalogue(Catalogue.Paths(), Catalogue.Engine());
    }
    Window = std::make_unique<frmMain>(App, Catalogue.Paths(), Catalogue.Engine(), std::move(media));
    Window->Form_Load();
    Get<QTimer>(QStringLiteral("Timer1")).setInterval(3'600'000);  // a show ticks by hand only
    Window->show();
    Window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
  }

  template <class Control = QWidget>
  Control& Get(const QString& name) {
    auto* control = Window->findChild<Control*>(name);
    if (control == nullptr) throw std::runtime_error("no control " + name.toStdString());
    return *control;
  }
  QAction& Action(const char* name) { return Get<QAction>(QLatin1String(name)); }
  void Choose(const char* name) { Action(name).trigger(); }
  // The names of those of the commands that pass the test.
  QString Those(const QStringList& names, bool (QAction::*test)() const) {
    QStringList passed;
    for (const QString& name : names) {
      if ((Get<QAction>(name).*test)()) passed << name;
    }
    return passed.join(QLatin1Char(' '));
  }
  platform::TreeView& Tree() { return Get<platform::TreeView>(QStringLiteral("tvTreeView")); }
  void ClickFolder(int index) {
    Tree().Root()->setExpanded(true);
    for (int i = 1; i <= Tree().Count(); ++i) Tree().NodeAt(i)->setExpanded(true);
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {},
                      Tree().visualItemRect(Tree().NodeAt(index)).center());
  }
  QString Counter() { return Get<browse::DataNavigator>(QStringLiteral("Data1")).Caption(); }
  QRect Twips(const char* name) {
    const QRect pixels = Get(QLatin1String(name)).geometry();
    return {pixels.left() * 15, pixels.top() * 15, pixels.width() * 15, pixels.height() * 15};
  }

  // Does something while the dialog that an action opens is there, and closes it.
  static void OnDialog(const char* name, const std::function<void()>& open,
                       const std::function<void()>& action) {
    bool opened = false;
    QTimer::singleShot(0, qApp, [&] {
      QWidget* dialog = QApplication::activeModalWidget();
      ASSERT_NE(dialog, nullptr);
      opened = dialog->objectName() == QLatin1String(name);
      action();
      dialog->close();
    });
    open();
    EXPECT_TRUE(opened) << name;
  }

  TestCatalogue Catalogue;
  platform::App App;
  std::unique_ptr<frmMain> Window;
};

// The folders by their places in the tree.
constexpr int Root = 1, TopUnorganized = 2, Home = 3, Travels = 4, Italy = 6;

}  // namespace veldrin::shell

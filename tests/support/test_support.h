// What the tests of all folders share: a catalogue of their own, pictures, message boxes that get their
// answer.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

#include "base/runtime_error.h"
#include "catalogue/record_source.h"
#include "engine/dao/db_engine.h"

struct sqlite3;

namespace veldrin::test {

/// The name of a case of a table of tests, whose type has a Name.
constexpr auto CaseName = [](const auto& tested) { return std::string(tested.param.Name); };

/// Runs the action and answers each message box that it opens, in order, with the next of the buttons.
/// Returns the boxes' texts as "title|text". A box too many is closed and reported as a failure; so is a box
/// that doesn't come.
QStringList AnswerBoxes(const std::function<void()>& action,
                        const QList<QMessageBox::StandardButton>& answers);

/// The number of the RuntimeError that the action raises, 0 for none.
int ErrorOf(const std::function<void()>& action);

/// Writes a picture of two colours to a file, in the format of its name's extension.
void WritePicture(const QString& path, QSize size, QColor color = Qt::darkGreen);

/// The bytes of a file; a missing one fails the test.
QByteArray ReadFile(const QString& path);
void WriteFile(const QString& path, const QByteArray& bytes);

/// A whole JPEG file, another one for each number.
QByteArray Jpeg(int number);

/// From now on temporary files are in memory, as far as there is room: thousands of flushed writes would wait
/// for the disk.
bool UseMemoryDisk();

/// The controls below `Root`, by name.
class Controls {
 protected:
  template <class Control = QWidget>
  Control& Get(const char* name) {
    return *Root->findChild<Control*>(QLatin1String(name));
  }
  QLineEdit& Field(const char* name) { return Get<QLineEdit>(name); }
  void Click(const char* name) { Get<QAbstractButton>(name).click(); }

  QWidget* Root = nullptr;
};

/// A program directory with the ready-made files, in a temporary directory, opened through its working copy.
class TestCatalogue {
 public:
  /// `open` false leaves out CreateWorkFile and OpenCatalogue.
  explicit TestCatalogue(bool open = true);

  QString ProgramPath() const { return Directory.path(); }
  catalogue::Paths& Paths() { return ThePaths; }
  engine::DBEngine& Engine() { return TheEngine; }

  /// Runs statements of the program's dialect on the working copy.
  void Execute(const QStringList& statements);
  /// The first value of a query's first row, as text; "<none>" without a row, "<null>" for Null.
  QString Value(const QString& sql);
  /// All rows of a query, values joined by "|".
  QStringList Rows(const QString& sql);
  /// The same in one text, rows joined by blanks.
  std::string RowsText(const char* sql) { return Rows(QString::fromUtf8(sql)).join(u' ').toStdString(); }

  void AddFolder(const QString& key, const QString& name);
  /// A photo row with the links given by folder key, and a stored image when `size` is valid.
  void AddPhoto(int photoId, const QString& title, const QStringList& folderKeys, QSize size = {});

 private:
  QTemporaryDir Directory;
  catalogue::Paths ThePaths;
  engine::DBEngine TheEngine;
};

/// Another program that has the catalogue's file, or another one, open for the life of the object.
class HeldCatalogue {
 public:
  /// `begin`: a statement of SQLite, such as one by which it takes hold of the file.
  HeldCatalogue(TestCatalogue& catalogue, const char* begin)
      : HeldCatalogue(catalogue.Paths().DatabaseFile, begin) {}
  HeldCatalogue(const QString& file, const char* begin);
  ~HeldCatalogue();
  HeldCatalogue(const HeldCatalogue&) = delete;
  HeldCatalogue& operator=(const HeldCatalogue&) = delete;

 private:
  sqlite3* File = nullptr;
};

}  // namespace veldrin::test

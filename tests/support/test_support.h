// What the tests of all folders share: a catalogue of their own, pictures, message boxes that get their
// answer.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTest>
#include <functional>

#include "base/runtime_error.h"
#include "catalogue/record_source.h"
#include "controls/named.h"
#include "engine/dao/db_engine.h"

namespace veldrin::test {

/// Runs the action and answers each message box that it opens, in order, with the next of the buttons.
/// Returns the boxes' texts as "title|text". A box too many is closed and reported as a failure; so is a box
/// that doesn't come.
QStringList AnswerBoxes(const std::function<void()>& action,
                        const QList<QMessageBox::StandardButton>& answers);

/// Does something in the dialog that an action opens, which must come, and closes it.
void InDialog(const std::function<void()>& open, const std::function<void(QWidget& dialog)>& use);

/// Waits until no view of the program waits for a picture.
void WaitForPictures();

/// Drops data on a control as the window system does; true when it was taken.
bool Drop(QWidget& target, const QMimeData& data);

/// The number of the RuntimeError that the action raises, 0 for none.
int ErrorOf(const std::function<void()>& action);

/// Writes a picture of two colours to a file, in the format of its name's extension.
void WritePicture(const QString& path, QSize size, QColor color = Qt::darkGreen);

/// The bytes of a file; a missing one fails the test.
QByteArray ReadFile(const QString& path);
void WriteFile(const QString& path, const QByteArray& bytes);

/// The files of a directory in the order of their names, also those that are hidden.
std::string NamesIn(const QString& directory);

/// A whole JPEG file, another one for each number.
QByteArray Jpeg(int number);

/// From now on temporary files are in memory, as far as there is room: thousands of flushed writes would wait
/// for the disk.
bool UseMemoryDisk();

/// The controls below `Root`, by name.
class Controls {
 protected:
  template <class Control = QWidget>
  Control& Get(const QString& name) {
    return controls::Get<Control>(*Root, name);
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
  /// All rows of a query, values joined by "|", with "<null>" for Null.
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
  /// `begin`: statements of SQLite, such as one by which it takes hold of the file.
  HeldCatalogue(TestCatalogue& catalogue, const char* begin)
      : HeldCatalogue(catalogue.Paths().DatabaseFile, begin) {}
  HeldCatalogue(const QString& file, const char* begin)
      : File(file.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE) {
    File.exec(begin);
  }

 private:
  SQLite::Database File;
};

}  // namespace veldrin::test

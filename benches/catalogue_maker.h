// Makes catalogues to measure on. What is made is kept and used again.
#pragma once

#include <QString>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

#include "catalogue/paths.h"
#include "engine/dao/db_engine.h"

namespace veldrin::benches {

/// A catalogue by its numbers. `Folders` counts the real ones, without "!UNORGANIZED".
struct CatalogueSize {
  int Photos = 0;
  int Folders = 0;
};

/// What the figures of "a million photos" are measured on.
constexpr CatalogueSize LargeCatalogue{1'000'000, 5'000};

/// The folder whose subtree holds every photo, and one below it that holds exactly PhotosInFolder.
constexpr auto TopFolderKey = "0001";
constexpr auto FullFolderKey = "000100010001";
constexpr int PhotosInFolder = 2000;

/// A program directory with a catalogue of that size, its folders three levels deep, made below `data`. There
/// are rows only, no pictures. One photo in ten stands in a second folder too.
QString MakeCatalogue(const QString& data, CatalogueSize size);

/// A program directory with the pictures given as photos 1, 2, ... in no folder; hard links where possible.
QString MakePictureCatalogue(const QString& program, const std::vector<std::string>& pictures);

/// A program directory with the ready-made files; what was there before goes.
void MakeEmptyCatalogue(const QString& program);

/// A copy of a program directory, flushed to the disk, for a measurement that changes it. What was in its
/// place goes.
QString CopyCatalogue(const QString& program, const QString& copy);

/// A catalogue that is open as the program has it after its start. Throws when it can't be opened.
class OpenedCatalogue {
 public:
  explicit OpenedCatalogue(const QString& program);
  OpenedCatalogue(const OpenedCatalogue&) = delete;
  OpenedCatalogue& operator=(const OpenedCatalogue&) = delete;

  const catalogue::Paths& Paths() const { return ThePaths; }
  engine::DBEngine& Engine() { return TheEngine; }

 private:
  QTemporaryDir Temp;  // Of its own: two runs of the benchmarks may measure on one catalogue.
  catalogue::Paths ThePaths;
  engine::DBEngine TheEngine;
};

/// The reference of the lists: the keys of the photos below a folder, each once, by SQLite's C interface and
/// the index on the links, through a connection that is open and warm. An empty folder key reads the keys of
/// all photos.
class KeyReader {
 public:
  explicit KeyReader(const QString& program);
  ~KeyReader();
  KeyReader(const KeyReader&) = delete;
  KeyReader& operator=(const KeyReader&) = delete;

  std::vector<int> ReadKeys(const std::string& folderKey);
  /// The keys and names of all folders, and how many there are.
  int ReadFolders();

 private:
  struct Connection;
  std::unique_ptr<Connection> TheConnection;
};

}  // namespace veldrin::benches

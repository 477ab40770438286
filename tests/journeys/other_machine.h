// The files of a catalogue, looked at and changed as another machine does it.
#pragma once

#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>

#include "journeys/journey_model.h"

namespace veldrin::test {

template <class Things, class Action>
void ForEachBeyond(const Things& these, const Things& others, Action&& action) {
  for (const auto& thing : these)
    if (std::find(others.begin(), others.end(), thing) == others.end()) action(thing);
}

class OtherMachine {
 public:
  OtherMachine(const QString& databaseFile, QString imageDir);

  /// Everything, read anew where it may have changed.
  const Stored& Look();
  /// Writes rows, links, folders and files that the catalogue hasn't got as in the model, and takes away
  /// those that the model hasn't got.
  void Write(const JourneyModel& model);
  /// Nobody else can write meanwhile, nor read where it is `alone`.
  void Hold(bool alone) { File.exec(alone ? "BEGIN EXCLUSIVE" : "BEGIN IMMEDIATE"); }
  void LetGo() { File.exec("COMMIT"); }

 private:
  std::vector<QStringList> Read(const QString& sql);
  void ReadTables();
  void ReadImages();

  SQLite::Database File;
  QString ImageDir;
  Stored Last;
  QString LastVersion;
  std::map<QString, QString> LastStates;  ///< of the image files
};

}  // namespace veldrin::test

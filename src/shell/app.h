// The application as the desktop knows it: where it lies, what it is called, whether it runs already.
#pragma once

#include <QLockFile>
#include <QStringList>
#include <memory>
#include <vector>

namespace veldrin::shell {

class App {
 public:
  static const int Major;
  static const int Minor;
  static const int Revision;

  /// Finds the program directory: the directory of the executable where `Database/` lies in it, otherwise
  /// `Veldrin` in the user's pictures directory.
  App();
  /// An application with directories of the caller's choosing. Both without a trailing separator.
  App(QString path, const QString& tempDir);
  ~App();

  static QString Title() { return QStringLiteral("Veldrin"); }
  /// "Version " and the three numbers.
  static QString VersionText();

  /// The program directory, with no trailing separator.
  const QString& Path() const { return ThePath; }

  /// The user's own directory for working files, with no trailing separator: in the user's runtime directory,
  /// or where there is none, in the directory that everybody has for temporary files.
  const QString& TempDir() const { return TempDirs.front(); }

  /// True when another instance of this user runs; otherwise this one takes the lock and keeps it for its
  /// life.
  bool PrevInstance();

  /// Makes TempDir with mode 0700 where it is missing. Raises error 70 when the place is taken by something
  /// that isn't a directory of this user's own.
  void MakeTempDir() const;

  /// At the first start of an installed program, copies its ready-made files and help pages to Path; later
  /// newer help pages only. Does nothing for a program that lies beside its own files. Never touches a
  /// directory that is already there. Raises error 75 when something can't be copied; what was copied of that
  /// directory is gone again.
  void FillPath() const;

 private:
  QString ThePath;
  /// TempDir, and where it might be for another start of this user. The lock lies in each, so that it is met
  /// by a start that doesn't know the runtime directory, and the other way round.
  QStringList TempDirs;
  QString ReadyMadePath;
  std::vector<std::unique_ptr<QLockFile>> Locks;
};

}  // namespace veldrin::shell

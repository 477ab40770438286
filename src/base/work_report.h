// What became of a piece of work on several things, for the one who asked for it.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "base/runtime_error.h"

namespace veldrin::base {

struct WorkReport {
  struct Failure {
    QString Name;    ///< of the file, photo or folder
    QString Reason;  ///< for people, without a path and without a full stop
  };

  QString Things;  ///< what the work is on, in the plural: "photos"
  QString Deed;    ///< what was to become of them, as a participle: "stored in Camera"
  int Done = 0;
  std::vector<Failure> Failures;
  bool Stopped = false;  ///< by the user; what is neither done nor failed wasn't begun

  bool IsAllDone() const { return Failures.empty() && !Stopped; }
};

/// Takes a report where the user sees it: in the status line, and in a box where something wasn't done.
using TellWork = std::function<void(const WorkReport&)>;

/// An error's description without the path at its end.
QString ReasonOf(const RuntimeError& error);

/// "12 photos stored in Camera", "1 photo stored in Camera", "No photos stored in Camera".
QString DoneText(const WorkReport& report);

/// What is told of the rest, in lines that end in carriage returns: how many were left out, why, and the
/// names of the first ten. Empty where all was done.
QString FailureText(const WorkReport& report);

}  // namespace veldrin::base

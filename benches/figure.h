// The figures of the benchmark table.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veldrin::benches {

/// One line of the table. A measurement does its own preparation and returns what it measured, in the unit.
/// Value and reference are measured in turn, and the line has the medians.
struct Figure {
  std::string Name;
  std::string Unit;
  std::function<double()> Value;
  std::function<double()> Reference;  ///< may be empty
  int Repetitions = 5;
};

void AddFigure(Figure figure);

/// Measures the figures whose names match one of the patterns (regular expressions; none stands for all) and
/// prints a tab-separated line for each: name, value, unit, reference, ratio. False when a measurement
/// failed.
bool PrintFigures(const std::vector<std::string>& patterns);

/// What several figures measure on: made by `make`, which returns a unique_ptr, at the first measurement that
/// needs it, and kept for the others.
template <class Make>
auto Lazy(Make make) {
  return [ make, made = std::make_shared<decltype(make())>() ]() -> auto& {
    if (!*made) *made = make();
    return **made;
  };
}

/// How long an action takes.
double Milliseconds(const std::function<void()>& action);

/// What this process has in memory, after giving back what it has freed.
double ResidentMegabytes();

/// The most that it had since ForgetPeak.
double PeakMegabytes();
void ForgetPeak();

/// Runs a command of the shell; a failing one is an exception.
void RunShell(const std::string& command);

/// The figures of each field; `data` is the directory of what is made once and kept.
void AddClipboardFigures(const std::string& data);
void AddFindFigures(const std::string& data);
void AddFolderFigures(const std::string& data);
void AddGetFigures(const std::string& data);
void AddHoldFigures(const std::string& data);
void AddOutputFigures(const std::string& data);
void AddPageFigures(const std::string& data);
void AddStoringFigures(const std::string& data);
void AddRecordFigures(const std::string& data);
void AddShowFigures(const std::string& data);
void AddWindowFigures(const std::string& data);

/// The program started on the directory argv[2]; tells when its main window is shown, and ends.
int RunStartChild(int argc, char** argv);

}  // namespace veldrin::benches

#include "benches/figure.h"

#include <benchmark/benchmark.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace veldrin::benches {

namespace {

constexpr auto ValueCounter = "value";
constexpr auto ReferenceCounter = "reference";

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

class LineReporter : public benchmark::BenchmarkReporter {
 public:
  bool Failed = false;

  bool ReportContext(const Context& context) override {
    // A second line of warning about the machine belongs to the other stream, as all but the table does.
    PrintBasicContext(&GetErrorStream(), context);
    std::printf("name\tvalue\tunit\treference\tratio\n");
    return true;
  }

  void ReportRuns(const std::vector<Run>& runs) override {
    std::vector<double> values;
    std::vector<double> references;
    for (const Run& run : runs) {
      if (run.error_occurred) {
        std::fprintf(stderr, "%s: %s\n", run.run_name.function_name.c_str(), run.error_message.c_str());
        Failed = true;
        return;
      }
      if (run.run_type != Run::RT_Iteration) continue;
      values.push_back(run.counters.at(ValueCounter));
      const auto reference = run.counters.find(ReferenceCounter);
      if (reference != run.counters.end()) references.push_back(reference->second);
    }
    // The frame's own means come as further runs.
    if (!values.empty()) Print(runs.front(), Median(values), references);
  }

 private:
  static void Print(const Run& run, double value, const std::vector<double>& references) {
    const std::string& name = run.run_name.function_name;
    const char* unit = run.report_label.c_str();
    if (references.empty()) {
      std::printf("%s\t%.3g\t%s\t-\t-\n", name.c_str(), value, unit);
    } else {
      const double reference = Median(references);
      std::printf("%s\t%.4g\t%s\t%.4g\t%.2f\n", name.c_str(), value, unit, reference, value / reference);
    }
    std::fflush(stdout);
  }
};

void Measure(benchmark::State& state, const Figure& figure) {
  for ([[maybe_unused]] auto iteration : state) {
    try {
      if (figure.Reference) state.counters[ReferenceCounter] = figure.Reference();
      state.counters[ValueCounter] = figure.Value();
    } catch (const std::exception& error) {
      state.SkipWithError(error.what());
    }
  }
  state.SetLabel(figure.Unit);
}

}  // namespace

void AddFigure(Figure figure) {
  const int repetitions = figure.Repetitions;
  const std::string name = figure.Name;
  benchmark::RegisterBenchmark(
      name.c_str(), [measured = std::move(figure)](benchmark::State& state) { Measure(state, measured); })
      ->Iterations(1)
      ->Repetitions(repetitions);
}

bool PrintFigures(const std::vector<std::string>& patterns) {
  std::string filter = patterns.empty() ? "all" : "";
  for (const std::string& pattern : patterns) filter += (filter.empty() ? "(" : "|(") + pattern + ")";
  LineReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter, filter);
  // The figures hold windows, which must go before the application object does.
  benchmark::ClearRegisteredBenchmarks();
  return !reporter.Failed;
}

double Milliseconds(const std::function<void()>& action) {
  const auto start = std::chrono::steady_clock::now();
  action();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double PeakMegabytes() {
  constexpr double kibibyte = 1024;
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) * kibibyte / 1e6;
  }
  return 0;
}

void ForgetPeak() { std::ofstream("/proc/self/clear_refs") << 5; }

double ResidentMegabytes() {
  malloc_trim(0);
  std::ifstream statm("/proc/self/statm");
  double pages = 0;
  statm >> pages >> pages;  // The second number is what is resident.
  return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

void RunShell(const std::string& command) {
  if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

}  // namespace veldrin::benches

// A user's walk at random through the whole window. VELDRIN_JOURNEY_SEED and VELDRIN_JOURNEY_STEPS say which
// and how long; VELDRIN_JOURNEY_REPLAY has the steps of a failed one.
#include <gmock/gmock.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLocale>
#include <iostream>
#include <random>
#include <utility>

#include "base/runtime_error.h"
#include "journeys/journey_steps.h"

namespace veldrin::test {

namespace {

constexpr int DefaultSteps = 2000;
constexpr int MostNumber = 9'999;
constexpr size_t MostShrinking = 120'000;  // steps

using Steps = std::vector<Step>;

QStringList& EscapedErrors() {
  static QStringList errors;
  return errors;
}

// As the program's own, but for the report: an error is kept for the walk.
class WalkApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
      EscapedErrors() << QString::fromUtf8(error.what());
    }
    return false;
  }
};

Steps MakeSteps(unsigned seed, int count) {
  std::mt19937 random(seed);
  std::vector<int> weights;
  for (const StepKind& kind : StepKinds()) weights.push_back(kind.Weight);
  std::discrete_distribution<size_t> pick(weights.begin(), weights.end());
  Steps steps;
  const auto number = [&] { return static_cast<int>(random() % (MostNumber + 1)); };
  for (int i = 0; i < count; ++i) {
    const StepKind& kind = StepKinds()[pick(random)];
    const int a = number();
    steps.push_back({&kind, a, number()});
  }
  return steps;
}

std::string Text(const Steps& steps) {
  QStringList texts;
  for (const Step& step : steps)
    texts << QStringLiteral("%1:%2:%3").arg(QLatin1String(step.Kind->Name)).arg(step.A).arg(step.B);
  return texts.join(u' ').toStdString();
}

Steps ReadSteps(const QString& text) {
  Steps steps;
  for (const QString& one : text.split(u' ', Qt::SkipEmptyParts)) {
    const QStringList parts = one.split(u':');
    for (const StepKind& kind : StepKinds())
      if (parts.size() == 3 && parts[0] == QLatin1String(kind.Name))
        steps.push_back({&kind, parts[1].toInt(), parts[2].toInt()});
  }
  return steps;
}

struct Fall {
  size_t Step;
  Failure Why;
};

std::optional<Fall> WalkThrough(const Steps& steps) {
  Walk walk;
  for (size_t i = 0; i < steps.size(); ++i) {
    try {
      walk.Do(steps[i]);
    } catch (const Failure& failure) {
      return Fall{i, failure};
    } catch (const std::exception& error) {
      return Fall{i, {"error", error.what()}};
    }
  }
  return {};
}

// Leaves out what the failure doesn't need: large pieces first, then single steps.
Steps Shrink(Steps steps, Fall& fall) {
  steps.resize(fall.Step + 1);
  size_t walked = 0;
  for (size_t piece = std::max<size_t>(1, steps.size() / 2), before = 0; piece > 0;) {
    before = steps.size();
    for (size_t at = 0; at < steps.size() && walked < MostShrinking;) {
      Steps fewer = steps;
      fewer.erase(fewer.begin() + at, fewer.begin() + std::min(at + piece, fewer.size()));
      const auto again = WalkThrough(fewer);
      walked += again ? again->Step + 1 : fewer.size();
      if (again && again->Why.Invariant == fall.Why.Invariant) {
        fall = *again;
        steps = std::move(fewer);
        steps.resize(fall.Step + 1);
      } else {
        at += piece;
      }
    }
    if (piece > 1 || before == steps.size() || walked >= MostShrinking) piece /= 2;
  }
  return steps;
}

int NumberOf(const char* variable, int otherwise) {
  return qEnvironmentVariableIsSet(variable) ? qEnvironmentVariableIntValue(variable) : otherwise;
}

TEST(Journey, TheScreenTellsTheTruthAfterEachStep) {
  UseMemoryDisk();
  const QString replay = qEnvironmentVariable("VELDRIN_JOURNEY_REPLAY");
  const auto seed =
      static_cast<unsigned>(NumberOf("VELDRIN_JOURNEY_SEED", static_cast<int>(std::random_device()() >> 1)));
  std::cout << "VELDRIN_JOURNEY_SEED=" << seed << std::endl;
  const Steps steps =
      replay.isEmpty() ? MakeSteps(seed, NumberOf("VELDRIN_JOURNEY_STEPS", DefaultSteps)) : ReadSteps(replay);
  QElapsedTimer clock;
  clock.start();
  std::optional<Fall> fall = WalkThrough(steps);
  const size_t done = fall ? fall->Step + 1 : steps.size();
  std::cout << done << " steps, " << done * 1000 / static_cast<size_t>(std::max<qint64>(1, clock.elapsed()))
            << " a second" << std::endl;
  if (!fall) return;
  std::cout << fall->Why.Invariant << ": " << fall->Why.What << std::endl;
  const Steps shrunk = replay.isEmpty() ? Shrink(steps, *fall) : steps;
  FAIL() << fall->Why.Invariant << ": " << fall->Why.What << "\nVELDRIN_JOURNEY_REPLAY=\"" << Text(shrunk)
         << '"';
}

}  // namespace

QStringList TakeEscapedErrors() { return std::exchange(EscapedErrors(), {}); }

std::span<const StepKind> StepKinds() {
  static const std::vector<StepKind> all = [] {
    std::vector<StepKind> kinds;
    for (const auto& some : {ViewSteps(), CommandSteps(), DialogSteps(), WorldSteps()})
      kinds.insert(kinds.end(), some.begin(), some.end());
    return kinds;
  }();
  return all;
}

}  // namespace veldrin::test

int main(int argc, char** argv) {
  veldrin::test::WalkApplication application(argc, argv);
  QApplication::setApplicationDisplayName("Veldrin");
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}

#include "base/work_report.h"

#include <QStringList>
#include <algorithm>

namespace veldrin::base {

namespace {

constexpr size_t MostNamed = 10;

// The things in the plural, but for one.
QString Counted(int count, const QString& things) {
  return QStringLiteral("%1 %2").arg(
      count == 0 ? QStringLiteral("No") : QString::number(count),
      count == 1 && things.endsWith(QLatin1Char('s')) ? things.chopped(1) : things);
}

}  // namespace

QString ReasonOf(const RuntimeError& error) {
  const QString& description = error.Description();
  const QString reason = description.left(description.indexOf(QLatin1String(": /")));
  return reason.endsWith(QLatin1Char('.')) ? reason.chopped(1) : reason;
}

QString DoneText(const WorkReport& report) {
  return Counted(report.Done, report.Things) + QLatin1Char(' ') + report.Deed;
}

// A reason that all share stands once.
QString FailureText(const WorkReport& report) {
  if (report.IsAllDone()) return {};
  QStringList lines{DoneText(report) + QLatin1Char('.')};
  const auto& failures = report.Failures;
  if (report.Stopped) lines << QStringLiteral("The work was stopped.");
  if (failures.empty()) return lines.join(QLatin1Char('\r'));
  const bool oneReason = std::all_of(failures.begin(), failures.end(), [&](const auto& failure) {
    return failure.Reason == failures.front().Reason;
  });
  lines << QStringLiteral("Not done, or not in full: %1%2")
               .arg(failures.size())
               .arg(oneReason ? QStringLiteral(" (%1)").arg(failures.front().Reason) : QString());
  lines << QString();
  for (size_t i = 0; i < std::min(failures.size(), MostNamed); ++i)
    lines << failures[i].Name + (oneReason ? QString() : QStringLiteral(": ") + failures[i].Reason);
  if (failures.size() > MostNamed)
    lines << QStringLiteral("... and %1 more").arg(failures.size() - MostNamed);
  return lines.join(QLatin1Char('\r'));
}

}  // namespace veldrin::base

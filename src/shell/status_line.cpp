#include "shell/status_line.h"

#include <QLocale>

#include "controls/msg_box.h"
#include "controls/named.h"

namespace veldrin::shell {

QString CountsText(int photos, int selected) {
  const QLocale locale;
  const QString counted =
      photos == 1 ? QStringLiteral("1 photo") : QStringLiteral("%1 photos").arg(locale.toString(photos));
  return selected == 0 ? counted : counted + QStringLiteral(", %1 selected").arg(locale.toString(selected));
}

StatusLine::StatusLine(const catalogue::RecordList& data1, QWidget* parent)
    : QStatusBar(parent),
      Data1(data1),
      lblWork(controls::Named(new QLabel(this), "lblWork")),
      lblCounts(controls::Named(new QLabel(this), "lblCounts")) {
  setObjectName(QStringLiteral("StatusLine"));
  constexpr int margin = 6;  // pixels
  setContentsMargins(margin, 0, 0, 0);
  addWidget(lblWork, 1);
  addPermanentWidget(lblCounts);
  connect(&Data1, &catalogue::RecordList::Refreshed, this, &StatusLine::ShowCounts);
  connect(&Data1.SelBookmarks, &catalogue::SelBookmarkList::Changed, this, &StatusLine::ShowCounts);
}

void StatusLine::ShowCounts() {
  lblCounts->setText(CountsText(Data1.RecordCount(), Data1.SelBookmarks.Count()));
}

void StatusLine::Tell(const base::WorkReport& report) {
  lblWork->setText(base::DoneText(report));
  const QString failures = base::FailureText(report);
  if (!failures.isEmpty())
    controls::MsgBox(window(), failures, controls::vbExclamation, QStringLiteral("Error"));
}

}  // namespace veldrin::shell

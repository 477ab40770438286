// The pictures of query and search.
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "tour/tour.h"

namespace veldrin::tour {

namespace {

// Fills a field of the modal dialog that the command opens, and presses a button of it.
void Enter(Tour& tour, const char* command, const char* field, const QString& text, const char* button) {
  QTimer::singleShot(0, qApp, [field, text, button] {
    const QWidget* dialog = QApplication::activeModalWidget();
    dialog->findChild<QLineEdit*>(QLatin1String(field))->setText(text);
    auto* press = dialog->findChild<QPushButton*>(QLatin1String(button));
    QTimer::singleShot(0, press, [press] { press->click(); });
  });
  tour.Choose(command);
}

// The box that such a button opens. It comes from within the dialog's own event.
void SaveBox(Tour& tour, const char* name, const char* command, const char* field, const QString& text,
             const char* button) {
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &look, [&tour, name, &look] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    look.stop();
    tour.Save(box->grab(), name);
    box->close();
    if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->reject();
  });
  look.start(0);
  Enter(tour, command, field, text, button);
}

}  // namespace

void TakeFindPictures(Tour& tour) {
  tour.Choose("MainData");
  tour.SelectFolder(QStringLiteral("Photos"));
  Enter(tour, "RecordQuery", "qDescription", QStringLiteral("a"), "OkBttn");
  tour.SaveModal("14-query", [&tour] { tour.Choose("RecordQuery"); });
  tour.Save("14-query-holds");
  tour.Choose("MainImage");
  tour.Save("14-query-holds-image-view");
  tour.Choose("MainData");
  Enter(tour, "RecordQuery", "qTitle", QStringLiteral("no such photo"), "OkBttn");
  tour.Save("14-query-without-result");
  tour.Get<QPushButton>("ResetBttn").click();
  tour.SaveModal("15-search", [&tour] { tour.Choose("RecordSearch"); });
  SaveBox(tour, "15-search-no-number", "RecordSearch", "MatchVal", QStringLiteral("one"), "FindBttn");
  SaveBox(tour, "15-search-not-found", "RecordSearch", "MatchVal", QStringLiteral("0"), "FindBttn");
  SaveBox(tour, "14-query-no-date", "RecordQuery", "qCrtDate(0)", QStringLiteral("soon"), "OkBttn");
}

}  // namespace veldrin::tour
